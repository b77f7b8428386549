#pragma once

#include <QString>
#include <QStringView>

/// What the readers of pages share: letters without their case, words, and a search that goes through a
/// text once. Any thread.
///
/// White space is what Unicode calls so (White_Space), which is QChar::isSpace().

/// The text in lower case as far as names of elements and attributes go, unit for unit: ASCII, and the two
/// letters elsewhere whose case is one of ASCII, the long s and the Kelvin sign.
QString foldedCase(QStringView text);

/// True where a word has a border: between a character of words and one that isn't, or an end of the text.
/// Words are made of letters, marks, digits, numbers that are letters, connectors such as the underscore,
/// and the two joiners (UTS #18, \w).
bool isWordBorder(QStringView text, qsizetype place);

/// Finds the next place of a character, for questions in ascending order: however many are asked, each part
/// of the text is looked at once. The text has to stay.
class NextPlace {
public:
    NextPlace(QStringView text, QChar character) : m_text(text), m_character(character) {}

    /// The first place from `from` on; the size of the text if there is none.
    qsizetype from(qsizetype from);

private:
    QStringView m_text;
    QChar m_character;
    qsizetype m_place = -1;
};

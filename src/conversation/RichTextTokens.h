#pragma once

#include <QByteArrayView>

#include <optional>

/// One piece of a document in the Rich Text Format.
struct RichTextToken {
    enum class Kind {
        groupStart,
        groupEnd,
        word,   ///< a backslash and letters, maybe with a number
        symbol, ///< a backslash and one other character
        bytes,  ///< of the text; never empty, and without control characters
    };

    Kind kind;
    QByteArrayView text;          ///< the name of the word, the character of the symbol, or the bytes
    std::optional<int> parameter; ///< the number of the word, at most a thousand million either way
};

/// Cuts a document into its pieces ("Rich Text Format 1.9.1", "Conventions of an RTF Reader"). A byte that is
/// written as two hexadecimal digits is a piece of bytes like any other. Line ends and other control
/// characters mean nothing, but for tabulators; the data behind \bin are passed over with that word. A piece
/// that the end of the document cuts off is left out, since half a word may be another word. The document has
/// to outlive the reading.
class RichTextTokens {
public:
    explicit RichTextTokens(QByteArrayView document) : m_document(document) {}

    /// The next piece; nothing at the end. Its view holds until the next call.
    std::optional<RichTextToken> next();

private:
    std::optional<RichTextToken> control();
    std::optional<RichTextToken> word();
    std::optional<RichTextToken> codedByte();
    std::optional<int> number();
    void passOverData(int size);
    bool isAtEnd() const { return m_position >= m_document.size(); }
    /// The bytes from `start` to the present position.
    QByteArrayView since(qsizetype start) const { return m_document.sliced(start, m_position - start); }
    template<typename Test>
    void passOver(Test test);

    QByteArrayView m_document;
    qsizetype m_position = 0;
    char m_codedByte = 0;
};

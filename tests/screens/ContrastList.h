#pragma once

#include "screens/Palette.h"

#include <QStringList>

/// Something that is to be read or made out, on what lies behind it, in every theme.
struct ContrastPair {
    enum class Kind {
        text,   ///< of the usual sizes
        symbol, ///< large text, icons, and what shows a state
    };
    enum class Origin {
        given, ///< the design names both colours
        ours,
    };

    QString front;
    QString back;
    Kind kind = Kind::text;
    Origin origin = Origin::ours;
    QList<double> ratios; ///< one for each of `themes`, in their order

    /// The least that WCAG 2.1 asks for at level AA.
    double least() const { return kind == Kind::text ? 4.5 : 3; }
    /// The least of the ratios.
    double worst() const;
};

/// Every pair that the windows have.
QList<ContrastPair> contrastPairs();

/// The list as docs/contrast.md has it.
QString contrastDocument();

#pragma once

#include "records/Settings.h"

#include <QFont>

#include <array>

/// The steps of the one type scale.
enum class TextStyle {
    wordmark, ///< the program's name at the start
    heading,  ///< the one large line of a screen
    headline, ///< what goes on, under the program's name; the heading of a sheet
    tagline,  ///< the same, said in passing
    title,    ///< the name of what a window shows
    body,     ///< messages, and what a person writes
    callout,  ///< text that goes with something
    control,  ///< words on buttons
    caption,  ///< a remark under something
};

/// The person's choice of text, from which every font of the windows follows. A plain value.
struct TextPreferences {
    TextSize size = TextSize::large;
    TypeFace typeFace = TypeFace::sans;

    bool operator==(const TextPreferences &) const = default;
};

/// The size of body text in device-independent pixels.
int bodySize(TextSize size);

/// The space between two lines of body text, added to the font's own height.
int lineSpacing(TextSize size);

/// All sizes and faces, in the order in which the settings show them.
inline constexpr std::array textSizes = {TextSize::small, TextSize::medium, TextSize::large,
                                         TextSize::extraLarge};
inline constexpr std::array typeFaces = {TypeFace::sans, TypeFace::serif};

/// The size's and the face's names as the settings show them.
QString displayName(TextSize size);
QString displayName(TypeFace typeFace);

/// The font of a step: Inter, or Noto Serif, where they are installed, else the system's own face of
/// that kind. Needs a QGuiApplication.
QFont fontOf(TextStyle style, const TextPreferences &preferences);

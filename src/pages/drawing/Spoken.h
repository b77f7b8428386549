#pragma once

#include <QAccessible>

/// What a widget that draws itself tells assistive technology: its role, and its name, which is asked
/// for only when somebody wants to hear it. A widget inherits this beside QWidget.
class Spoken {
public:
    virtual ~Spoken() = default;

    virtual QAccessible::Role spokenRole() const = 0;
    virtual QString spokenName() const = 0;

    /// True if nothing else in the window can be reached while this is seen.
    virtual bool isSpokenModal() const { return false; }

    /// Makes such widgets known to the toolkit. Further calls do nothing. Main thread.
    static void install();
};

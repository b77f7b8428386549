#pragma once

#include <QAccessible>

/// What a widget that draws itself tells assistive technology: its role, and its name, which is asked
/// for only when somebody wants to hear it. A widget inherits this beside QWidget.
class Spoken {
public:
    virtual ~Spoken() = default;

    virtual QAccessible::Role spokenRole() const = 0;
    virtual QString spokenName() const = 0;

    /// What stands there now, of several things that could; empty if that is nothing to be heard.
    virtual QString spokenValue() const { return {}; }

    /// What more there is to say; empty for the widget's own description.
    virtual QString spokenDescription() const { return {}; }

    /// True if nothing else in the window can be reached while this is seen.
    virtual bool isSpokenModal() const { return false; }

    /// Whether something belongs to this that can be folded away, and is.
    enum class Fold { none, folded, unfolded };
    virtual Fold spokenFold() const { return Fold::none; }

    /// Makes such widgets known to the toolkit. Further calls do nothing. Main thread.
    static void install();

protected:
    /// Says that the fold of the widget is another one now.
    static void tellFold(QWidget *widget);
};

#pragma once

#include <QWidget>

class Look;

/// The window of scheduled runs.
class ScheduleListView : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ScheduleListView(const Look &look, QWidget *parent = nullptr);
};

#pragma once

#include "engine/EngineProcessBox.h"
#include "platform/Clock.h"
#include "platform/Notification.h"
#include "platform/Processes.h"

#include <QUuid>

#include <functional>

#ifndef Q_MOC_RUN
/// What a run without the program's window asks of the process and of the system. A test has its own.
struct HeadlessSurroundings {
    EngineProcessBox &box = EngineProcessBox::shared();
    Clock &clock = Clock::system();
    std::function<bool()> anotherInstanceRuns = ::anotherInstanceRuns;
    std::function<Task<>(QString title, QString body, std::stop_token stop)> postNotification =
        ::postNotification;
};

/// Runs one schedule in a process of its own: starts the engine, asks once, keeps the answer as a chat, ends
/// the engine, and tells the person with a notification. Whether the schedule is enabled doesn't matter: its
/// job was there. Nothing is done, and nobody told, while another instance of the program runs, without an
/// installed model, and for a schedule that has gone; a failure is told. Throws nothing but Cancelled, once
/// `stop` is requested. Main thread.
Task<> runHeadlessSchedule(QUuid id, HeadlessSurroundings around, std::stop_token stop);
#endif

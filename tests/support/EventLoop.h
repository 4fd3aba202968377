// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

namespace vx::test {

/// Whether the cases of a program make application objects of their own.
inline bool g_testsMakeApplications = false;

/// Gives every program of tests that includes this header an application object, so that event loops run.
class CEventLoopEnvironment final : public ::testing::Environment {
public:
    void SetUp() override {
        if (!QCoreApplication::instance() && !g_testsMakeApplications)
            m_application = std::make_unique<QCoreApplication>(m_count, m_arguments);
    }
    void TearDown() override { m_application.reset(); }

private:
    char m_name[6] = "tests";
    int m_count = 1;
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QCoreApplication> m_application;
};

inline ::testing::Environment* const g_eventLoop = ::testing::AddGlobalTestEnvironment(new CEventLoopEnvironment);

/// Runs the event loop until a condition holds; false when the deadline came first.
template <class Condition> bool WaitUntil(Condition condition, int deadlineMs = 10000) {
    QElapsedTimer elapsed;
    elapsed.start();
    QTimer tick; // The loop wakes for it, so that a condition without an event of its own is seen too.
    tick.start(2);
    while (!condition()) {
        if (elapsed.hasExpired(deadlineMs)) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Gives the event loop a number of turns without waiting in any, and counts those that had something to do. What is
/// ready stays ready, so something that spins is busy in every turn.
inline int TurnEventLoop(int turns) {
    int busy = 0;
    for (int i = 0; i < turns; ++i)
        if (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents)) ++busy;
    return busy;
}

} // namespace vx::test

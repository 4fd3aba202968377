#pragma once

#include "vxconnect/ByteStream.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <string>

namespace vx::sim {

/// How long to wait before something that has ended is started again: each time twice as long as before, up to kMostMs;
/// after a run of kSteadyMs it begins with the first pause again.
class CGrowingPause {
public:
    static constexpr int kMostMs = 60'000;
    static constexpr int64_t kSteadyMs = 10'000;

    explicit CGrowingPause(int firstMs) : m_firstMs(firstMs), m_nextMs(firstMs) {}
    int After(int64_t ranMs);

private:
    const int m_firstMs;
    int m_nextMs;
};

/// What a command writes to its standard output. The command is started once the event loop runs, and again after a
/// pause each time that it has ended. Its standard error is this program's.
///
/// Owns    the command and what it has started in its turn: they end with this object, and with this program
class CFeeder final : public CByteStream {
public:
    CFeeder(const std::string& command, int firstPauseMs);
    ~CFeeder() override;

    std::string Name() const override { return "feeder"; }
    std::string Open() override;

private:
    void Run();
    void Read();
    void Ended(const std::string& how);

    QProcess m_process;
    QTimer m_again;
    QElapsedTimer m_ran;
    CGrowingPause m_pause;
};

} // namespace vx::sim

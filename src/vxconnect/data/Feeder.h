#pragma once

#include "vxconnect/data/ByteStream.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <string>

namespace vx::sim {

/// How long to wait before starting something that has ended: each pause is twice the one before, up to kMostMs. A run
/// of kSteadyMs or more resets it to the first pause.
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

/// The standard output of a command. The command is started as soon as the event loop runs, and after each end again,
/// with a growing pause. Its standard error is that of this program.
///
/// Owns    the command and everything it has started: they end with this object and with this program
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

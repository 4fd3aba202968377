// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vx::sim {

/// A source of bytes of a user's own live data. It may end and may come back.
///
/// Thread  the one of its event loop
class CByteStream : public QObject {
public:
    /// Its name for the user: "standard input".
    virtual std::string Name() const = 0;
    /// Starts to follow the source. The two functions below may be called from now on, even before this returns.
    ///
    /// Returns why it cannot, empty for success
    virtual std::string Open() = 0;

    std::function<void(std::string_view bytes)> OnBytes;
    /// The source has ended; how: in words, "has ended". Bytes that come later start a new text.
    std::function<void(const std::string& how)> OnEnd;
};

/// An open descriptor that is read as it becomes readable.
class CDescriptorStream : public CByteStream {
protected:
    /// Follows a descriptor instead of the previous one; below 0: none.
    void Follow(int descriptor);
    int Descriptor() const { return m_descriptor; }
    /// Reads once, so that it never waits: the descriptor must be readable or at its end.
    void Read();
    /// The descriptor gives nothing more; error: why, 0 for its end.
    virtual void Ended(int error) = 0;

private:
    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_readable;
};

/// Standard input, until it ends.
class CStandardInput final : public CDescriptorStream {
public:
    /// The descriptor remains the caller's.
    explicit CStandardInput(int descriptor) : m_input(descriptor) {}

    std::string Name() const override { return "standard input"; }
    /// Reads until nothing comes for a moment or a second has passed.
    std::string Open() override;

private:
    void Ended(int error) override;

    const int m_input;
};

/// A named pipe. One program after another may write to it.
///
/// Owns    the descriptors that it opens
class CNamedPipe final : public CDescriptorStream {
public:
    explicit CNamedPipe(std::string path);
    ~CNamedPipe() override;

    std::string Name() const override;
    std::string Open() override;

private:
    int Reopen();
    void Close();
    void LookForAnother();
    void Ended(int error) override;

    const std::string m_path;
    QTimer m_look; // The pipe may have been made anew.
};

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

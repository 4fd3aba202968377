#pragma once

#include "vxconnect/data/ByteStream.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <string>

namespace vx::sim {

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

} // namespace vx::sim

#pragma once

#include "vxconnect/DataSource.h"
#include "vxconnect/LineBuffer.h"
#include "vxconnect/RowReader.h"

#include <QSocketNotifier>

#include <functional>
#include <string>

namespace vx::sim {

/// A user's own data from a stream that is followed as it grows: each row is told as it arrives. A line that is wrong
/// is told and passed over. At the end of the stream the last values stay.
class CInputPipeSource final : public CDataSource {
public:
    /// Errors told one by one before only every kErrorStep-th is.
    static constexpr uint64_t kMostErrors = 20;
    static constexpr uint64_t kErrorStep = 1000;

    /// Reads from a descriptor, which stays the caller's. complain is called with one line for each error.
    CInputPipeSource(const SOptions& options, int descriptor, std::function<void(const std::string&)> complain);

    /// Reads what is there already, until nothing comes for a moment or a second has passed, and begins to follow.
    ///
    /// Errors  false when the stream has ended without one good row, which has been told
    bool Open();

    std::string Kind() const override { return "user data"; }
    std::string Detail() const override { return "standard input"; }

protected:
    void Advance(double) override {}

private:
    void Read();
    void ReadLines();
    void Complain(uint64_t line, std::string_view what);

    const int m_descriptor;
    const std::function<void(const std::string&)> m_complain;
    CLineBuffer m_lines;
    CRowReader m_reader;
    SRow m_row;
    uint64_t m_errors = 0;
    bool m_ended = false;
    QSocketNotifier m_readable;
};

} // namespace vx::sim

#pragma once

#include "vxconnect/DataSource.h"
#include "vxconnect/LineFile.h"
#include "vxconnect/RowReader.h"

#include <string>
#include <vector>

namespace vx::sim {

/// A user's own data from a file. Every symbol is there with its first row from the start; once somebody watches a
/// symbol, the other rows follow in the file's order at a fixed number a second, and the last values stay.
class CInputFileSource final : public CDataSource {
public:
    static constexpr size_t kMostErrors = 20;

    explicit CInputFileSource(const SOptions& options);

    /// Reads the whole file once.
    ///
    /// Returns what is wrong with it, one line for each of the first kMostErrors errors; empty for nothing
    std::vector<std::string> Open();

    std::string Kind() const override { return "user data"; }
    std::string Detail() const override;

protected:
    void Advance(double seconds) override;

private:
    bool ApplyFirstRow(const SRow& row);
    void PlayLine(const SInputLine& line);

    const std::string m_path;
    const double m_rate;
    CLineFile m_file;
    CRowReader m_reader;
    SRow m_row;
    std::vector<bool> m_played; // By record: its first row, known from the start, has been passed.
    double m_due = 0;           // Rows.
    bool m_ended = false;
};

} // namespace vx::sim

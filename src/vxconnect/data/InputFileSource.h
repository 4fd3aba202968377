#pragma once

#include "vxconnect/data/Complaints.h"
#include "vxconnect/data/DataSource.h"
#include "vxconnect/data/LineFile.h"
#include "vxconnect/data/RowReader.h"

#include <string>
#include <vector>

namespace vx::sim {

/// A user's own data from a file. Every symbol is there with its first row from the start; once somebody watches a
/// symbol, the other rows follow in the file's order at a fixed number a second, and the last values stay.
class CInputFileSource final : public CDataSource {
public:
    CInputFileSource(const SOptions& options, CComplaints::Say say);

    /// Reads the whole file once.
    ///
    /// Errors  false when it contains nothing to serve; that and every wrong line have been reported
    bool Open();

    std::string Kind() const override { return "user data"; }
    std::string Detail() const override;

protected:
    void Advance(double seconds) override;

private:
    bool Begin();
    CRowReader::EResult Next();
    void ApplyFirstRow();
    void Play();

    const std::string m_path;
    const double m_rate;
    CComplaints m_complaints;
    bool m_reported = false; // The errors in the file: once is enough, although it is read twice.
    CBlockFile m_file;
    CRowReader m_reader;
    SRow m_row;
    std::vector<bool> m_played; // By record: its first row, known from the start, has been passed.
    double m_due = 0;           // Rows.
    bool m_ended = false;
};

} // namespace vx::sim

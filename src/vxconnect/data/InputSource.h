// SPDX-License-Identifier: MIT
#pragma once

#include "vxconnect/data/ByteStreams.h"
#include "vxconnect/data/DataSource.h"
#include "vxconnect/data/LineFile.h"
#include "vxconnect/data/RowReader.h"

#include <QTimer>

#include <cstdint>
#include <memory>
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

/// A user's own data from a stream that is followed as it grows: each row is served as it arrives. Errors are reported
/// and skipped. The last values stay, whatever becomes of the stream.
///
/// The source is live from its first row until the stream ends, or until neither a row nor a blank line has come for as
/// long as the options allow. The next row or blank line makes it live again.
class CInputPipeSource final : public CDataSource {
public:
    CInputPipeSource(const SOptions& options, std::unique_ptr<CByteStream> stream, CComplaints::Say say);

    /// Begins to follow.
    ///
    /// Errors  false when there is nothing to follow or it has ended without a single good row, which has been reported
    bool Open();

    std::string Kind() const override { return "user data"; }
    std::string Detail() const override;
    bool IsLive() const override { return m_live; }

protected:
    void Advance(double) override {}

private:
    void Read(std::string_view bytes);
    void ReadLines();
    void NoteLife();
    void End(const std::string& how);
    void Judge();
    void SetLive(bool live);

    const int64_t m_staleMs; // 0: silence never counts.
    CComplaints m_complaints;
    CRowReader m_reader;
    SRow m_row;
    std::unique_ptr<CByteStream> m_stream;
    QTimer m_judge;
    int64_t m_lifeMs = 0; // When the last row or blank line came.
    bool m_live = false;
    std::string m_lastEnd; // In words; empty when it has never ended.
};

} // namespace vx::sim

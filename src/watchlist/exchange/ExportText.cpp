// SPDX-License-Identifier: MIT
#include "watchlist/exchange/ExportText.h"

#include "base/AtomicFile.h"
#include "base/CsvWriter.h"
#include "base/Windows1252.h"
#include "watchlist/document/WatchlistDoc.h"
#include "watchlist/exchange/ShownCells.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

namespace vx {

namespace {

constexpr std::array<std::string_view, 5> kNeverLinked{kAlertsColumn, kNotesColumn, kNewsColumn, kHeadlineColumn, " "};

bool IsLinked(std::string_view column) {
    return std::find(kNeverLinked.begin(), kNeverLinked.end(), column) == kNeverLinked.end();
}

class CExport {
public:
    CExport(const CWatchlistDoc& doc, const SExportOptions& options)
        : m_doc(doc), m_cells(doc), m_options(options), m_out(options.commas ? ',' : '\t', "\n") {
        for (const int column : m_cells.Columns()) m_names.push_back(Text(doc.Columns().At(column).name));
        const auto symbol = std::find(m_names.begin(), m_names.end(), kSymbolColumn);
        m_symbol = static_cast<size_t>(symbol - m_names.begin());
    }

    void AppendHeaders() {
        for (const std::string& name : m_names) m_out.OneLine(name);
        m_out.EndRecord();
    }

    void AppendRow(int row) {
        m_fields.assign(m_names.size(), {});
        m_cells.ForEach(row, [&](size_t index, std::string_view text) {
            m_fields[index] = m_options.utf8 ? m_cells.Utf8(row, index, text) : std::string(text);
            return true;
        });
        const bool linked = m_options.linkFormulas && m_doc.RowKind(row) == ERowKind::Symbol;
        const std::string symbol = m_symbol < m_fields.size() ? m_fields[m_symbol] : Text(m_doc.RowSymbol(row));
        for (size_t i = 0; i < m_fields.size(); ++i) {
            if (linked && !m_fields[i].empty() && IsLinked(m_names[i]))
                m_fields[i] = fmt::format("=VxLink|'{}'!'{}'", symbol, m_names[i]);
            m_out.OneLine(m_fields[i]);
        }
        m_out.EndRecord();
    }

    std::string Take() { return m_out.Take(); }

private:
    std::string Text(std::string_view text) const {
        return m_options.utf8 ? Utf8FromWindows1252(text) : std::string(text);
    }

    const CWatchlistDoc& m_doc;
    const CShownCells m_cells;
    const SExportOptions& m_options;
    std::vector<std::string> m_names;
    std::vector<std::string> m_fields;
    size_t m_symbol; ///< Among the exported columns; their number when it is not one of them.
    CCsvWriter m_out;
};

constexpr uint32_t kNewFile = 0666;

bool IsFull(int error) { return error == ENOSPC || error == EDQUOT || error == EFBIG || error == EIO; }

SExportResult WriteOver(const std::string& path, const std::string& text) {
    std::unique_ptr<COpenFile> file;
    if (const int error = Disk().Open(path, EOpen::Overwrite, kNewFile, file))
        return {EExportOutcome::NotOpened, error};
    const int error = WriteAll(*file, text);
    return {error == 0 ? EExportOutcome::Written : EExportOutcome::Torn, error};
}

SExportResult AppendToFile(const CWatchlistDoc& doc, const SExportOptions& options, const std::string& path) {
    std::unique_ptr<COpenFile> file;
    if (const int error = Disk().Open(path, EOpen::Append, kNewFile, file)) return {EExportOutcome::NotOpened, error};
    SFileStatus before;
    const bool isRegular = file->Status(before) == 0 && before.kind == EFileKind::Regular;
    const int64_t size = before.signature.size;
    const bool begins = !isRegular || size == 0;
    const int error = WriteAll(*file, ExportText(doc, options, options.columnHeaders && begins));
    if (error == 0) return {};
    const bool isBack = isRegular && file->Truncate(size) == 0;
    return {isBack ? EExportOutcome::Failed : EExportOutcome::Torn, error};
}

} // namespace

std::string ExportText(const CWatchlistDoc& doc, const SExportOptions& options, bool headers) {
    CExport out(doc, options);
    if (headers) out.AppendHeaders();
    for (int row = 1; row <= doc.LastUsedRow(); ++row) out.AppendRow(row);
    return out.Take();
}

SExportResult ExportToFile(const CWatchlistDoc& doc, const SExportOptions& options, const std::string& path) {
    if (options.append) return AppendToFile(doc, options, path);
    const std::string text = ExportText(doc, options, options.columnHeaders);
    const int error = SaveFile(path, text);
    if (error == EINVAL || error == EACCES || error == EPERM || error == EROFS) return WriteOver(path, text);
    return {error == 0      ? EExportOutcome::Written
            : IsFull(error) ? EExportOutcome::Failed
                            : EExportOutcome::NotOpened,
            error};
}

} // namespace vx

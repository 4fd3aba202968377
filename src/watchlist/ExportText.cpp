#include "watchlist/ExportText.h"

#include "watchlist/ShownCells.h"
#include "watchlist/WatchlistDoc.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <iterator>

namespace vx {

namespace {

constexpr std::array<std::string_view, 5> kNeverLinked{kAlertsColumn, kNotesColumn, kNewsColumn, kHeadlineColumn, " "};

bool IsLinked(std::string_view column) {
    return std::find(kNeverLinked.begin(), kNeverLinked.end(), column) == kNeverLinked.end();
}

class CExport {
public:
    CExport(const CWatchlistDoc& doc, const SExportOptions& options) : m_doc(doc), m_cells(doc), m_options(options) {
        for (const int column : m_cells.Columns()) m_names.push_back(doc.Columns().At(column).name);
        const auto symbol = std::find(m_names.begin(), m_names.end(), kSymbolColumn);
        m_symbol = static_cast<size_t>(symbol - m_names.begin());
    }

    void AppendHeaders() {
        for (const std::string& name : m_names) AppendField(name);
        EndLine();
    }

    void AppendRow(int row) {
        m_fields.assign(m_names.size(), {});
        m_cells.ForEach(row, [&](size_t index, std::string_view text) {
            m_fields[index] = text;
            return true;
        });
        const bool linked = m_options.linkFormulas && m_doc.RowKind(row) == ERowKind::Symbol;
        const std::string symbol(m_symbol < m_fields.size() ? m_fields[m_symbol] : m_doc.RowSymbol(row));
        for (size_t i = 0; i < m_fields.size(); ++i) {
            if (linked && !m_fields[i].empty() && IsLinked(m_names[i]))
                m_fields[i] = fmt::format("=VxLink|'{}'!'{}'", symbol, m_names[i]);
            AppendField(m_fields[i]);
        }
        EndLine();
    }

    std::string Take() {
        if (m_options.commas) std::replace(m_out.begin(), m_out.end(), '\t', ',');
        return std::move(m_out);
    }

private:
    void AppendField(std::string_view text) {
        if (m_inLine) m_out += '\t';
        m_inLine = true;
        const size_t begin = m_out.size();
        m_out += text;
        std::replace_if(
            m_out.begin() + static_cast<std::ptrdiff_t>(begin), m_out.end(),
            [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    }
    void EndLine() {
        m_out += '\n';
        m_inLine = false;
    }

    const CWatchlistDoc& m_doc;
    const CShownCells m_cells;
    const SExportOptions& m_options;
    std::vector<std::string> m_names;
    std::vector<std::string> m_fields;
    size_t m_symbol; ///< Among the exported columns; their number when it is not one of them.
    std::string m_out;
    bool m_inLine = false;
};

} // namespace

std::string ExportText(const CWatchlistDoc& doc, const SExportOptions& options, bool headers) {
    CExport out(doc, options);
    if (headers) out.AppendHeaders();
    for (int row = 1; row <= doc.LastUsedRow(); ++row) out.AppendRow(row);
    return out.Take();
}

EExportOutcome ExportToFile(const CWatchlistDoc& doc, const SExportOptions& options, const std::string& path) {
    constexpr mode_t kNewFile = 0666;
    const int how = O_WRONLY | O_CREAT | O_CLOEXEC | (options.append ? O_APPEND : O_TRUNC);
    const int descriptor = open(path.c_str(), how | O_NONBLOCK, kNewFile); // A pipe without a reader is not waited for.
    std::FILE* file = descriptor < 0 ? nullptr : fdopen(descriptor, options.append ? "a" : "w");
    if (!file) return EExportOutcome::NotOpened;
    const bool begins = std::fseek(file, 0, SEEK_END) != 0 || std::ftell(file) <= 0;
    const std::string text = ExportText(doc, options, options.columnHeaders && begins);
    const bool whole = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    const bool closed = std::fclose(file) == 0;
    return whole && closed ? EExportOutcome::Written : EExportOutcome::Failed;
}

} // namespace vx

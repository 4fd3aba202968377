// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogEvents.h"
#include "watchlist/DocFixture.h"
#include "watchlist/file/WatchlistFile.h"
#include "watchlist/fileformat/WatchlistWriter.h"

namespace vx::test {

/// A document with a file, and folders of the test's own for both the file and what is kept beside it.
class CFileFixture : public CDocFixture {
protected:
    std::string Golden(std::string_view name) const { return std::string(ZW_TEST_FILES "/") + std::string(name); }
    std::string At(std::string_view name) const { return files / name; }

    /// Opens a text as if it stood in a file of that name.
    SFileResult OpenAs(std::string_view name, std::string_view text) {
        WriteFile(At(name), text);
        return file.Open(At(name));
    }
    SFileResult Save() { return file.Save(doc.Options().placement); }
    SFileResult SaveAs(std::string_view name) { return file.SaveAs(At(name), doc.Options().placement); }
    std::string Written() const { return WriteWatchlistText(doc, doc.Options().placement); }
    /// One line of what would be written, without its key.
    std::string WrittenLine(std::string_view key) const {
        const std::string text = fmt::format("\r\n{}", Written());
        const std::string mark = fmt::format("\r\n{}=", key);
        const size_t begin = text.find(mark) + mark.size();
        return text.substr(begin, text.find("\r\n", begin) - begin);
    }
    /// The columns in their order: "Symbol=70 Last=0 ".
    std::string Columns() const {
        std::string out;
        for (int i = 1; i < doc.Columns().Count(); ++i)
            out += fmt::format("{}={} ", doc.Columns().At(i).name, doc.Columns().At(i).width);
        return out;
    }
    std::vector<std::string> BackupTexts() const {
        std::vector<std::string> out;
        for (const SBackup& generation : file.Backups()) out.push_back(ReadFile(generation.path));
        return out;
    }
    void Change(int row, std::string_view symbol) {
        doc.Update()->PlaceSymbol(row, symbol);
        doc.Edit({}, [](CWatchlistEdit&) {});
    }

    CLogEvents log{"Information"};
    CTempFolder files, state;
    CWatchlistFile file{doc, state.Path()};
};

} // namespace vx::test

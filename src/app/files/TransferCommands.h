// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <string>

namespace vx {

class CFileController;
struct SFrameContext;

/// Takes symbols from other programs and passes the watchlist to them: import, export, print.
///
/// Owns    nothing of context and files, which outlive it
/// Thread  GUI thread only
class CTransferCommands : public QObject {
    Q_OBJECT
public:
    CTransferCommands(const SFrameContext& context, CFileController& files);

    void Export();
    /// Shows what of a file's symbols would be added, and adds it when the user agrees.
    void ImportFile(const std::string& path);
    /// The same for a text, Windows-1252. source: where it comes from, for the dialog.
    void ImportText(const std::string& text, const std::string& source);
    void Print();

private:
    void AskAndImport();
    void Report(const std::string& text);

    const SFrameContext& m_context;
    CFileController& m_files;
};

} // namespace vx

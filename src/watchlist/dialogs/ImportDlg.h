// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace vx {

struct SImportPreview;

/// Shows what an import would add, what the watchlist has already and what was not understood, before anything
/// happens.
///
/// Errors  OK is disabled when there is nothing to add
/// Thread  GUI thread only
class CImportDlg : public QDialog {
    Q_OBJECT
public:
    /// source: where the symbols come from, for the user; row: where they would go.
    CImportDlg(const SImportPreview& preview, const QString& source, int row, QWidget* parent);
};

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include "watchlist/document/WatchlistOptions.h"

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QVBoxLayout;

namespace vx {

/// The dialog in which the user says how the watchlist is to be exported: values or link formulas, the separator, a
/// first line of column names, the encoding, and whether a file is added to or replaced.
///
/// Thread  GUI thread only
class CQuoteDataOptions : public QDialog {
    Q_OBJECT
public:
    /// options: what the dialog begins with.
    CQuoteDataOptions(const SExportOptions& options, QWidget* parent);

    SExportOptions Options() const;

private:
    QButtonGroup* AddGroup(QVBoxLayout& layout, const QString& title, const char* first, const char* second,
                           bool isSecond);
    QCheckBox* AddBox(QVBoxLayout& layout, const QString& text, const char* name, const QString& tip, bool isOn);

    QButtonGroup* m_export;
    QButtonGroup* m_format;
    QCheckBox* m_headers;
    QCheckBox* m_utf8;
    QButtonGroup* m_file;
};

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QRgb>
#include <QString>

#include <functional>
#include <vector>

class QFont;
class QPagedPaintDevice;
class QPainter;

namespace vx {

class CGridCtrl;
struct SCell;

/// Prints what a grid shows: its columns that are not hidden, with the header on every page.
///
/// Shape   columns that do not fit beside each other are made smaller, down to kSmallest; what then still does not fit
///         is on further pages. Always in the light colours
/// Units   lengths in pixels of 1/96 inch before zooming
/// Owns    nothing: grid and device outlive it; their layout must not change meanwhile
/// Thread  GUI thread only
class CListPrinter {
public:
    static constexpr double kSmallest = 0.6;

    /// rows: the first so many are printed, hidden ones left out.
    CListPrinter(const CGridCtrl& grid, int rows, QString title, QPagedPaintDevice& device);

    int PageCount() const { return m_rowPages * static_cast<int>(m_sheets.size()); }

    /// Prints the pages from the first to the last, 1 and up. goOn gets the page before each; false ends it.
    ///
    /// Errors  false when the device cannot be painted on or goOn ended it
    bool Print(int firstPage, int lastPage, const std::function<bool(int page)>& goOn);

private:
    /// Columns that are side by side on a page.
    struct SSheet {
        int first = 1, last = 0;
    };

    void CutIntoSheets();
    void PrintPage(QPainter& painter, int page, const QString& time) const;
    void PrintRow(QPainter& painter, const SSheet& sheet, int row, double top) const;
    void PrintCell(QPainter& painter, const SCell& cell, const QRectF& place, const QFont& font, QRgb row) const;

    const CGridCtrl& m_grid;
    int m_rows;
    QString m_title;
    QPagedPaintDevice& m_device;
    const double m_rowHeight;
    double m_scale = 1; ///< Device pixels to a pixel of the page.
    double m_width = 0, m_height = 0;
    int m_rowsPerPage = 1;
    int m_rowPages = 1;
    std::vector<SSheet> m_sheets;
};

} // namespace vx

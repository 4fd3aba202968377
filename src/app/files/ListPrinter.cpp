// SPDX-License-Identifier: MIT
#include "app/files/ListPrinter.h"

#include "base/Windows1252.h"
#include "base/qt/QtText.h"
#include "grid/GridCtrl.h"

#include <QDateTime>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vx {

namespace {

constexpr double kPixelsPerInch = 96;
constexpr double kPointsPerInch = 72;
constexpr double kRowHeightOfText = 1.5; // A row's height as a multiple of the tallest text's.
constexpr double kTitleHeight = 26;
constexpr double kFootHeight = 22;
constexpr double kPadding = 4;
constexpr int kTextPixels = 12;
constexpr int kTitlePixels = 15;
constexpr int kTickPixels = 8; // So that as many ticks fit into their column as on the screen.

const SGridTheme& Theme() { return kLightGridTheme; }

QRgb BackgroundOf(const SCell& cell, QRgb row) {
    if (cell.directionMark == EDirectionMark::Background && cell.direction != ETextRole::Unchanged)
        return DirectionTint(Theme(), cell.direction, false);
    return cell.background != kAutomaticColor ? RgbFromColorRef(cell.background) : row;
}

QChar ArrowOf(ETextRole direction) {
    return direction == ETextRole::Up ? kTickUpSign : direction == ETextRole::Down ? kTickDownSign : kTickDotSign;
}

QString Printable(const SCell& cell) {
    return cell.tickTrend ? QString::fromUtf8(Utf8FromTickTrend(cell.Text())) : QtText(cell.Text());
}

/// The colours of a cell's text, chosen as on the screen: what cannot be read on its background gives way.
class CPrintedColors {
public:
    /// row: what is behind the cell when it has no background of its own.
    CPrintedColors(const SCell& cell, QRgb row)
        : m_cell(cell), m_ownBackground(cell.background != kAutomaticColor),
          m_background(m_ownBackground ? RgbFromColorRef(cell.background) : row) {}

    QColor OfText() const {
        if (m_cell.role != ETextRole::Explicit || m_cell.textColor == kAutomaticColor) return OfRole(m_cell.role);
        const QRgb own = RgbFromColorRef(m_cell.textColor);
        return m_ownBackground ? own : ReadableTextColor(Theme(), ETextRole::Explicit, own, m_background);
    }
    QColor OfTick(QChar tick) const {
        if (m_cell.role == ETextRole::Stale) return OfText();
        return tick == kTickUpSign     ? OfRole(ETextRole::Up)
               : tick == kTickDownSign ? OfRole(ETextRole::Down)
               : tick == kTickDotSign  ? OfRole(ETextRole::Unchanged)
                                       : OfText();
    }

private:
    QColor OfRole(ETextRole role) const {
        const QRgb color = Theme().RoleColor(role);
        return m_ownBackground ? ReadableTextColor(Theme(), role, color, m_background) : color;
    }

    const SCell& m_cell;
    bool m_ownBackground;
    QRgb m_background;
};

Qt::Alignment AlignmentOf(EAlign align) {
    if (align == EAlign::Center) return Qt::AlignHCenter | Qt::AlignVCenter;
    return (align == EAlign::Right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QFont FontOf(int pixels, bool bold) {
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

int PixelsOf(const SGridFont& font) {
    return std::max(1, static_cast<int>(std::lround(font.size * kPixelsPerInch / kPointsPerInch)));
}

QFont FontOf(const SGridFont& of) {
    QFont font(of.family);
    font.setPixelSize(PixelsOf(of));
    font.setBold(of.bold);
    font.setItalic(of.italic);
    return font;
}

double RowHeightOf(const CGridFonts& fonts) {
    int tallest = kTextPixels;
    for (int id = 0; id < fonts.Count(); ++id) tallest = std::max(tallest, PixelsOf(fonts.Font(id)));
    return tallest * kRowHeightOfText;
}

} // namespace

CListPrinter::CListPrinter(const CGridCtrl& grid, int rows, QString title, QPagedPaintDevice& device)
    : m_grid(grid), m_rows(grid.Geometry().ShownRowsIn(1, std::min(rows, grid.RowCount()))), m_title(std::move(title)),
      m_device(device), m_rowHeight(RowHeightOf(grid.Fonts())) {
    const QRectF area = device.pageLayout().paintRect(QPageLayout::Inch);
    double total = 0;
    for (int column = 1; column <= grid.ColumnCount(); ++column) total += grid.ColumnWidth(column);
    const double page = area.width() * kPixelsPerInch;
    const double zoom = total > 0 ? std::clamp(page / total, kSmallest, 1.0) : 1.0;
    m_scale = device.logicalDpiX() / kPixelsPerInch * zoom;
    m_width = page / zoom;
    m_height = area.height() * kPixelsPerInch / zoom;
    m_rowsPerPage = std::max(1, static_cast<int>((m_height - kTitleHeight - kFootHeight) / m_rowHeight) - 1);
    m_rowPages = std::max(1, (m_rows + m_rowsPerPage - 1) / m_rowsPerPage);
    CutIntoSheets();
}

void CListPrinter::CutIntoSheets() {
    double used = 0;
    SSheet sheet;
    for (int column = 1; column <= m_grid.ColumnCount(); ++column) {
        const double width = m_grid.ColumnWidth(column);
        // A hair more than the page is rounding, not a reason for another page.
        if (used > 0 && used + width > m_width + 0.5) {
            m_sheets.push_back(sheet);
            sheet.first = column;
            used = 0;
        }
        sheet.last = column;
        used += width;
    }
    m_sheets.push_back(sheet);
}

bool CListPrinter::Print(int firstPage, int lastPage, const std::function<bool(int page)>& goOn) {
    QPainter painter;
    if (!painter.begin(&m_device)) return false;
    painter.scale(m_scale, m_scale);
    const QString time = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    for (int page = std::max(1, firstPage); page <= std::min(lastPage, PageCount()); ++page) {
        if (!goOn(page) || (page > std::max(1, firstPage) && !m_device.newPage())) return false;
        PrintPage(painter, page, time);
    }
    return true;
}

// All sheets of some rows, then those of the next rows.
void CListPrinter::PrintPage(QPainter& painter, int page, const QString& time) const {
    const int sheets = static_cast<int>(m_sheets.size());
    const SSheet& sheet = m_sheets[static_cast<size_t>((page - 1) % sheets)];
    const int firstPlace = (page - 1) / sheets * m_rowsPerPage + 1;
    const QRectF head(0, 0, m_width, kTitleHeight - kPadding);
    painter.setPen(QColor(Theme().text));
    painter.setFont(FontOf(kTitlePixels, true));
    painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, m_title);
    painter.setFont(FontOf(kTextPixels, false));
    painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter, time);
    double top = kTitleHeight;
    PrintRow(painter, sheet, 0, top);
    for (int place = firstPlace; place <= std::min(m_rows, firstPlace + m_rowsPerPage - 1); ++place)
        PrintRow(painter, sheet, m_grid.Geometry().ShownRowAt(place), top += m_rowHeight);
    painter.setPen(QColor(Theme().text));
    painter.setFont(FontOf(kTextPixels, false));
    painter.drawText(QRectF(0, m_height - kFootHeight, m_width, kFootHeight), Qt::AlignRight | Qt::AlignBottom,
                     QStringLiteral("Page %1 of %2").arg(page).arg(PageCount()));
}

// Row 0 is the header.
void CListPrinter::PrintRow(QPainter& painter, const SSheet& sheet, int row, double top) const {
    const CCellSource& source = *m_grid.Source();
    double right = 0;
    for (int column = sheet.first; column <= sheet.last; ++column) right += m_grid.ColumnWidth(column);
    SCell cell;
    if (row > 0 && source.FillSpan(row, cell)) {
        painter.fillRect(QRectF(0, top, right, m_rowHeight), QColor(Theme().span));
        PrintCell(painter, cell, {0, top, right, m_rowHeight}, FontOf(m_grid.Fonts().Font(cell.font)), Theme().span);
    } else {
        double left = 0;
        if (row == 0) painter.fillRect(QRectF(0, top, right, m_rowHeight), QColor(Theme().header));
        for (int column = sheet.first; column <= sheet.last; ++column) {
            const double width = m_grid.ColumnWidth(column);
            if (width < 1) continue;
            cell.Reset();
            if (row == 0)
                source.FillHeader(column, cell);
            else
                source.FillCell(row, column, cell);
            PrintCell(painter, cell, {left, top, width, m_rowHeight},
                      row == 0 ? FontOf(kTextPixels, true) : FontOf(m_grid.Fonts().Font(cell.font)),
                      row == 0 ? Theme().header : Theme().base);
            left += width;
        }
    }
    painter.setPen(QPen(QColor(row == 0 ? Theme().headerLine : Theme().gridLine), 0.75));
    painter.drawLine(QPointF(0, top + m_rowHeight), QPointF(right, top + m_rowHeight));
}

void CListPrinter::PrintCell(QPainter& painter, const SCell& cell, const QRectF& place, const QFont& font,
                             QRgb row) const {
    if (const QRgb background = BackgroundOf(cell, row); background != row) painter.fillRect(place, QColor(background));
    if (cell.length == 0) return;
    painter.setFont(cell.tickTrend ? FontOf(kTickPixels, false) : font);
    const CPrintedColors colors(cell, row);
    QRectF inner = place.adjusted(kPadding, 0, -kPadding, 0);
    if (cell.directionMark == EDirectionMark::Arrow) {
        const QChar arrow = ArrowOf(cell.direction);
        painter.setFont(FontOf(kTickPixels, false));
        painter.setPen(colors.OfTick(arrow));
        painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, QString(arrow));
        inner.setLeft(inner.left() + painter.fontMetrics().horizontalAdvance(arrow) + kPadding);
        painter.setFont(font);
    }
    const QFontMetricsF metrics(painter.fontMetrics());
    const QString text = metrics.elidedText(Printable(cell), Qt::ElideRight, std::ceil(inner.width()));
    if (!cell.tickTrend) {
        painter.setPen(colors.OfText());
        painter.drawText(inner, static_cast<int>(AlignmentOf(cell.align)) | Qt::TextSingleLine, text);
        return;
    }
    QRectF rest = inner;
    const double spare = inner.width() - metrics.horizontalAdvance(text);
    rest.setLeft(inner.left() + (cell.align == EAlign::Left ? 0 : cell.align == EAlign::Right ? spare : spare / 2));
    for (const QChar tick : text) {
        painter.setPen(colors.OfTick(tick));
        painter.drawText(rest, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, QString(tick));
        rest.setLeft(rest.left() + metrics.horizontalAdvance(tick));
    }
}

} // namespace vx

#include "alerts/ui/NoticePlace.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace vx {

namespace {

constexpr int kGap = 8; // Between the notice and the board.

bool TakeNumber(std::string_view& text, int& out) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    if (error != std::errc{}) return false;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return true;
}

} // namespace

QPoint BroughtInside(const QPoint& wanted, const QSize& notice, const QRect& screen) {
    const auto inside = [](int place, int size, int from, int room) {
        return std::max(from, std::min(place, from + room - size));
    };
    return {inside(wanted.x(), notice.width(), screen.left(), screen.width()),
            inside(wanted.y(), notice.height(), screen.top(), screen.height())};
}

QPoint FirstNoticePlace(const QSize& notice, const QRect& board, const QRect& screen) {
    const int right = screen.left() + screen.width() - notice.width();
    const int bottom = screen.top() + screen.height() - notice.height();
    const std::array places = {QPoint(board.left() + board.width() + kGap, board.top()),
                               QPoint(board.left() - kGap - notice.width(), board.top()),
                               QPoint(board.left(), board.top() + board.height() + kGap),
                               QPoint(board.left(), board.top() - kGap - notice.height()),
                               QPoint(right, bottom),
                               QPoint(right, screen.top()),
                               QPoint(screen.left(), bottom),
                               screen.topLeft()};
    constexpr size_t kBeside = 4;
    for (size_t i = 0; i < places.size(); ++i) {
        const QPoint place = BroughtInside(places[i], notice, screen);
        const QRect covered(place, notice);
        if (i < kBeside ? !board.isEmpty() && screen.contains(covered) && !covered.intersects(board)
                        : !covered.contains(board.center()))
            return place;
    }
    return BroughtInside({right, bottom}, notice, screen);
}

std::optional<QPoint> ReadNoticePlace(std::string_view text) {
    int left = 0;
    int top = 0;
    if (!TakeNumber(text, left) || !text.starts_with(',')) return std::nullopt;
    text.remove_prefix(1);
    if (!TakeNumber(text, top) || !text.empty()) return std::nullopt;
    return QPoint(left, top);
}

std::string NoticePlaceText(const QPoint& place) { return fmt::format("{},{}", place.x(), place.y()); }

} // namespace vx

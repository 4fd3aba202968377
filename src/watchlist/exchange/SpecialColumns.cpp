#include "watchlist/exchange/SpecialColumns.h"

#include "watchlist/exchange/RowCellText.h"

#include <array>
#include <string_view>

namespace vx {

namespace {

struct SNamedColumn {
    std::string_view name;
    int SSpecialColumns::*index;
};

constexpr std::array kSpecial = {SNamedColumn{kSymbolColumn, &SSpecialColumns::symbol},
                                 SNamedColumn{kAlertsColumn, &SSpecialColumns::alerts},
                                 SNamedColumn{kNotesColumn, &SSpecialColumns::notes},
                                 SNamedColumn{"Tick Trend", &SSpecialColumns::tickTrend},
                                 SNamedColumn{"Bid Tick", &SSpecialColumns::bidTick},
                                 SNamedColumn{"Exchange", &SSpecialColumns::exchange},
                                 SNamedColumn{kNewsColumn, &SSpecialColumns::news},
                                 SNamedColumn{kHeadlineColumn, &SSpecialColumns::latestHeadline},
                                 SNamedColumn{"Last", &SSpecialColumns::last},
                                 SNamedColumn{"Ask", &SSpecialColumns::ask},
                                 SNamedColumn{"Bid", &SSpecialColumns::bid}};

} // namespace

SSpecialColumns FindSpecialColumns(std::span<const SFieldEntry> catalogue) {
    SSpecialColumns out;
    for (size_t entry = catalogue.size(); entry-- > 1;) {
        for (const SNamedColumn& special : kSpecial) {
            int& index = out.*special.index;
            if (index == SSpecialColumns::kNoColumn && catalogue[entry].name == special.name)
                index = static_cast<int>(entry);
        }
    }
    return out;
}

} // namespace vx

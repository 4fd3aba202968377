// SPDX-License-Identifier: MIT
// The alert history: a text that is read in two files gives the same firings as in one, and whatever they hold can be
// told in words. The first byte says at which of its lines the text is cut.

#include "alerts/rules/AlertHistory.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace vx;

namespace {

std::string Told(const std::vector<SAlertFiring>& firings) {
    return HistoryCsv(firings) + LocalTimeText(LastAbsence(firings));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    std::vector<SAlertFiring> whole;
    ParseHistory(text, whole);

    size_t cut = 0;
    for (int line = data[0]; line > 0 && cut < text.size(); --line)
        cut = std::min(text.find('\n', cut), text.size() - 1) + 1;
    std::vector<SAlertFiring> pieces;
    ParseHistory(text.substr(0, cut), pieces);
    ParseHistory(text.substr(cut), pieces);
    if (Told(whole) != Told(pieces)) std::abort();
    return 0;
}

// SPDX-License-Identifier: MIT
// Alert text: what was read and written once is read and written the same ever after. The notice of each alert that it
// describes, and the text taken as such a notice, is read without harm.

#include "alerts/rules/AlertsMap.h"

#include <cstdlib>
#include <stdexcept>

using namespace vx;

namespace {

struct SNotices : CFiredAlertReceiver {
    void PostFired(std::string record, const A_INFO&) override { ReadAlertRecord(record); }
    void PostFiredNews(SAlertRecord, const A_INFO&) override {}
};

std::string Rewritten(std::string_view text) {
    CAlertsMap alerts;
    alerts.Load(text);
    return alerts.Save();
}

void FireAll(CAlertsMap& alerts) {
    for (const std::string& symbol : alerts.Symbols())
        for (int i = 0; i < alerts.Count(symbol); ++i)
            alerts.EvaluateFieldAlert(symbol, i, alerts.Get(symbol)[static_cast<size_t>(i)].value, 1, 2, 3);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    // The first writing rounds thresholds to six places, which may make alerts equal.
    const std::string written = Rewritten(Rewritten(text));
    if (Rewritten(written) != written) std::abort();

    SNotices notices;
    CAlertsMap alerts;
    alerts.SetReceiver(&notices);
    alerts.Load(text);
    FireAll(alerts);
    alerts.CheckNews(text);
    try {
        alerts.ResetFromRecord(text);
    } catch (const std::invalid_argument&) {
    }
    ReadAlertRecord(text);
    return 0;
}

// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/AlertsMap.h"

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vx::test {

using namespace testing; // Its matchers.

/// An alert map that remembers what it posted and what it announced.
class CAlertsFixture : public testing::Test, protected CFiredAlertReceiver, protected CAlertsObserver {
protected:
    CAlertsFixture() {
        alerts.SetReceiver(this);
        alerts.SetObserver(this);
    }

    static A_INFO Alert(std::string_view field, std::string_view condition, double value, bool noZero = false) {
        return {1, noZero, 0, value, AlertFieldId(field).value(), ReadCondition(condition), 0, {}};
    }

    bool Add(std::string_view symbol, std::string_view field, std::string_view condition, double value,
             bool noZero = false) {
        return alerts.Add(symbol, Alert(field, condition, value, noZero));
    }

    void PostFired(std::string record, const A_INFO& alert) override {
        posted.push_back(std::move(record));
        firedAlerts.push_back(alert);
    }
    void PostFiredNews(SAlertRecord notice, const A_INFO& alert) override {
        news.push_back(std::move(notice));
        firedAlerts.push_back(alert);
    }
    void OnAlertsChanged(std::string_view symbol, int armed) override { announced[std::string(symbol)] = armed; }
    void OnAlertsFiredOrArmed() override { ++firedOrArmed; }

    CAlertsMap alerts;
    std::vector<std::string> posted;
    std::vector<SAlertRecord> news;
    CAlertArray firedAlerts; ///< The alert of each, as it was before it fired.
    int firedOrArmed = 0;
    std::map<std::string, int> announced; ///< The last word about each symbol.
};

} // namespace vx::test

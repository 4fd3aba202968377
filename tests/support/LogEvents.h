// SPDX-License-Identifier: MIT
#pragma once

#include "base/Log.h"

#include <string>
#include <string_view>
#include <vector>

namespace vx::test {

/// Keeps the log's events of some categories, each as "L1Data FROM SERVER text", as long as it lives.
class CLogEvents {
public:
    explicit CLogEvents(std::string_view categories) {
        Want(categories);
        m_previous = SetLogSink([this](const SLogEvent& event) {
            texts.push_back(std::string(LogName(event.category)) + " " + std::string(LogName(event.direction)) + " " +
                            event.text);
        });
    }
    ~CLogEvents() {
        SetLogSink(m_previous);
        Want(kDefaultLogCategories);
    }
    CLogEvents(const CLogEvents&) = delete;
    CLogEvents& operator=(const CLogEvents&) = delete;

    void Want(std::string_view categories) { SetLogCategories(ReadLogCategories(categories)); }

    std::vector<std::string> texts;

private:
    LogSink m_previous;
};

} // namespace vx::test

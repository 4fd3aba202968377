#pragma once

#include <string_view>

namespace vx {

/// Takes the reports of the validation step, each a finished text, and writes them to the program's log. The main
/// frame makes one when it starts; reports from before or after its life are dropped.
class CConfigLogger {
public:
    virtual ~CConfigLogger() = default;

    virtual void Report(std::string_view text);
};

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include "base/fields/QuoteFields.h"

#include <string>

namespace vx {

/// The list of update fields as the level-1 session sends it: the names with "," between them and LF at the end.
/// The LF belongs to the text; the session's command adds one more.
inline const std::string& UpdateFieldList() {
    static const std::string list = [] {
        std::string names;
        for (const SUpdateField& field : kUpdateFields) {
            if (!names.empty()) names += ',';
            names += field.name;
        }
        return names + '\n';
    }();
    return list;
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include "data/catalogue/UpdateFields.h"

namespace vx {

namespace {

std::string BuildList() {
    std::string list;
    for (const SUpdateField& field : kUpdateFields) {
        if (!list.empty()) list += ',';
        list += field.name;
    }
    return list + '\n';
}

} // namespace

const std::string& UpdateFieldList() {
    static const std::string list = BuildList();
    return list;
}

} // namespace vx

#include "base/Log.h"

#include "base/Text.h"

namespace vx {

namespace {

/// In the order of ELogCategory.
constexpr std::array<std::string_view, kLogCategoryCount + 1> kCategories{
    "Admin",   "L1Data",     "L1Request",     "L1System",    "L1Error",     "L2Data", "L2Request",    "L2System",
    "L2Error", "LookupData", "LookupRequest", "LookupError", "Information", "Debug",  "Connectivity", "Off",
};

/// In the order of ELogDirection.
constexpr std::array<std::string_view, 5> kDirections{"FROM CLIENT", "TO CLIENT", "FROM SERVER", "TO SERVER", "STATUS"};

} // namespace

std::string_view LogName(ELogCategory category) { return kCategories[static_cast<size_t>(category)]; }

std::string_view LogName(ELogDirection direction) { return kDirections[static_cast<size_t>(direction)]; }

LogCategories ReadLogCategories(std::string_view list, std::string* unknown) {
    constexpr std::string_view kSeparators = ";, ";
    LogCategories out = 0;
    bool off = false;
    for (size_t start = 0; (start = list.find_first_not_of(kSeparators, start)) != std::string_view::npos;) {
        const std::string_view name = list.substr(start, list.find_first_of(kSeparators, start) - start);
        start += name.size();
        int row = 0;
        while (row <= kLogCategoryCount && CompareNoCase(kCategories[static_cast<size_t>(row)], name) != 0) ++row;
        if (row < kLogCategoryCount)
            out |= LogCategories(1) << row;
        else if (row == kLogCategoryCount)
            off = true;
        else if (unknown)
            unknown->append(unknown->empty() ? "" : ";").append(name);
    }
    return off ? 0 : out;
}

} // namespace vx

#pragma once

#include "vxconnect/common/InputFields.h"

#include <map>
#include <string>
#include <string_view>

namespace vx::sim {

/// Finds the field of a name in a user's own data: in the user's map first, else by the name itself.
class CFieldNames {
public:
    struct SFound {
        const SInputField* field = nullptr;
        bool leftOut = false; ///< The user has mapped it to nothing.
    };

    /// Adds the value of --map: "Stock=Symbol,Close=Last"; a name with nothing after "=" is left out.
    ///
    /// Returns what is wrong with it, in one line; empty for nothing
    std::string Add(std::string_view map);
    bool IsEmpty() const { return m_fields.empty(); }
    SFound Find(std::string_view name) const;

private:
    std::map<std::string, const SInputField*> m_fields; // By the plain name; null: left out.
};

} // namespace vx::sim

#pragma once

#include "vxconnect/InputFields.h"

#include <map>
#include <string>
#include <string_view>

namespace vx::sim {

/// Which field a name in a user's own data stands for: by the user's map, else by itself.
class CFieldNames {
public:
    struct SFound {
        const SInputField* field = nullptr;
        bool leftOut = false; ///< No field, and the user knows.
    };

    /// Takes over what --map says: "Stock=Symbol,Close=Last"; a name with nothing behind "=" is left out.
    ///
    /// Returns what is wrong with it, in one line; empty for nothing
    std::string Add(std::string_view map);
    bool IsEmpty() const { return m_fields.empty(); }
    SFound Find(std::string_view name) const;

private:
    std::map<std::string, const SInputField*> m_fields; // By the plain name; null: left out.
};

} // namespace vx::sim

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vx::sim {

/// Reports what is wrong with a user's own data, one line each: the first kMostTold errors, then only every kStep-th.
class CComplaints {
public:
    static constexpr uint64_t kMostTold = 20;
    static constexpr uint64_t kStep = 1000;

    using Say = std::function<void(const std::string& line)>;

    /// name: that of the data, "quotes.csv".
    CComplaints(std::string name, Say say) : m_name(std::move(name)), m_say(std::move(say)) {}

    /// A line of the data is wrong.
    void Line(uint64_t number, std::string_view what);
    /// Something is wrong with the data as a whole; always reported.
    void Whole(std::string_view what) const;

private:
    const std::string m_name;
    const Say m_say;
    uint64_t m_count = 0;
};

} // namespace vx::sim

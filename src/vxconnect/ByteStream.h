#pragma once

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

namespace vx::sim {

/// Where the bytes of a user's own live data come from: something that may end, and may come again.
///
/// Thread  the one of its event loop
class CByteStream : public QObject {
public:
    /// As users know it: "standard input".
    virtual std::string Name() const = 0;
    /// Begins to follow it. The two functions below may be called at once, and from then on.
    ///
    /// Returns why that cannot be, empty for success
    virtual std::string Open() = 0;

    std::function<void(std::string_view bytes)> OnBytes;
    /// It has ended, which is told in words: "has ended". What comes after that begins anew.
    std::function<void(const std::string& how)> OnEnd;
};

} // namespace vx::sim

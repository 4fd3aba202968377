#pragma once

#include <QObject>

#include <functional>
#include <string>
#include <string_view>

namespace vx::sim {

/// A source of bytes of a user's own live data. It may end and may come back.
///
/// Thread  the one of its event loop
class CByteStream : public QObject {
public:
    /// Its name for the user: "standard input".
    virtual std::string Name() const = 0;
    /// Starts to follow the source. The two functions below may be called from now on, even before this returns.
    ///
    /// Returns why it cannot, empty for success
    virtual std::string Open() = 0;

    std::function<void(std::string_view bytes)> OnBytes;
    /// The source has ended; how: in words, "has ended". Bytes that come later start a new text.
    std::function<void(const std::string& how)> OnEnd;
};

} // namespace vx::sim

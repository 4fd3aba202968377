#pragma once

#include <QEvent>

#include <string_view>

namespace vx {

/// The event type that stands for a message registered by name; the same name gives the same type for the whole run.
///
/// Thread  GUI thread only
QEvent::Type RegisterMessage(std::string_view name);

/// A registered message on its way to a window, with the two parameters that such messages carry.
class CRegisteredMessage : public QEvent {
public:
    CRegisteredMessage(QEvent::Type type, uint32_t first, uint32_t second)
        : QEvent(type), m_first(first), m_second(second) {}
    uint32_t First() const { return m_first; }
    uint32_t Second() const { return m_second; }

private:
    uint32_t m_first;
    uint32_t m_second;
};

} // namespace vx

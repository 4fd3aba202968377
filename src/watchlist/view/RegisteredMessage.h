#pragma once

#include <QEvent>

#include <string_view>

namespace vx {

/// The event type that stands for a message registered by name; the same name gives the same type for the whole run.
///
/// Thread  GUI thread only
QEvent::Type RegisterMessage(std::string_view name);

/// A registered message on its way to a window, with a number whose meaning is the message's own.
class CRegisteredMessage : public QEvent {
public:
    explicit CRegisteredMessage(QEvent::Type type, uint32_t number = 0) : QEvent(type), m_number(number) {}
    uint32_t Number() const { return m_number; }

private:
    uint32_t m_number;
};

} // namespace vx

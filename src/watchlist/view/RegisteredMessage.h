// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>

#include <string_view>

namespace vx {

// Names under which the program's windows register the messages that they post to each other.

/// Records changed: the window drains its CChangeQueue. The two parameters are the record's identifiers.
inline constexpr std::string_view kPaintMessageName = "VXDOCS PAINT MSG";
/// The feed's connection state changed; the first parameter is 1 or 0.
inline constexpr std::string_view kConnectStatusMessageName = "VXDOCS CONNECT STATUS MSG";
/// Somebody saves the workspace: each window notes where it stands and what it shows.
inline constexpr std::string_view kSaveWorkspaceMessageName = "ZANTREL_SAVE_WORKSPACE";

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

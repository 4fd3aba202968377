#pragma once

#include <QObject>

#include <cstdint>

namespace vx {

/// Knows whether the program is the active one, and since when it is not.
///
/// Thread  GUI thread only
class CPresence : public QObject {
    Q_OBJECT
public:
    explicit CPresence(QObject* parent = nullptr);

    bool IsHere() const { return m_awaySinceMs == 0; }
    /// Milliseconds since 1970 UTC; 0 while the program is the active one.
    int64_t AwaySinceMs() const { return m_awaySinceMs; }
    /// The program became the active one, or another one did.
    void SetHere(bool here);

Q_SIGNALS:
    void Returned();

private:
    int64_t m_awaySinceMs = 0;
};

} // namespace vx

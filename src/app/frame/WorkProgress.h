#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <cstddef>
#include <functional>
#include <memory>

class QProgressDialog;
class QWidget;

namespace vx {

/// Shows how far a long piece of work is, once it turns out to be long, with a button to cancel it. Meanwhile the
/// window goes on living, but takes no input.
///
/// Owns    its dialog
/// Thread  GUI thread only
class CWorkProgressBox {
public:
    static constexpr int kShowAfterMs = 400;

    CWorkProgressBox(QWidget* parent, QString label, QString cancel = QStringLiteral("&Cancel"));
    ~CWorkProgressBox();

    /// Call it every few milliseconds. A total of 0: nobody knows how far the work is. False: the user cancelled.
    bool Step(size_t done, size_t total);
    /// Step, as work takes it. The box must live as long.
    std::function<bool(size_t, size_t)> Function() {
        return [this](size_t done, size_t total) { return Step(done, total); };
    }

private:
    QWidget* m_parent;
    QString m_label, m_cancel;
    QElapsedTimer m_age;
    QElapsedTimer m_shown; ///< Since the last look at events.
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace vx

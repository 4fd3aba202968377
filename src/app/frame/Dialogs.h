// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

class QDialog;
class QProgressDialog;
class QWidget;

namespace vx {

/// Makes a dialog fit on its screen when it is shown: smaller as far as its contents allow, and if that is not enough,
/// with everything but its bottom row in an area that scrolls.
class CDialogFit : public QObject {
    Q_OBJECT
public:
    explicit CDialogFit(QDialog& dialog);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fit();
    void MakeScroll();

    QDialog& m_dialog;
};

/// Message boxes that open by themselves while one of these lives, as after a save on a slow disk, take no key until
/// none was pressed for kQuietMs: the user is typing into the window.
class CStrayKeyGuard : public QObject {
    Q_OBJECT
public:
    static constexpr int kQuietMs = 2000;

    CStrayKeyGuard();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_holds = false;
    int64_t m_lastMs = 0; ///< When the box opened, or a key was pressed since.
};

/// Shows the progress of long work, once it has taken a while, with a button to cancel it. Meanwhile the
/// window stays alive, but takes no input.
///
/// Owns    its dialog
class CWorkProgressBox {
public:
    static constexpr int kShowAfterMs = 400;

    CWorkProgressBox(QWidget* parent, QString label, QString cancel = QStringLiteral("&Cancel"));
    ~CWorkProgressBox();

    /// Call it every few milliseconds. A total of 0: the end is not known. False: the user cancelled.
    bool Step(size_t done, size_t total);
    /// Step as a callback. The box must live as long.
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

/// Shows the program's message boxes as windows: plain text whatever the text holds, one at a time in the order asked.
///
/// Owns    nothing; call it once after the application object exists, with the window the boxes belong to (may be null
///         until there is one)
void InstallQtMessageBoxes(QWidget* parent);

} // namespace vx

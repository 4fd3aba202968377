#pragma once

#include <QObject>

class QDialog;

namespace vx {

/// Sees to it that a dialog fits on its screen when it is shown: made smaller as far as its contents allow, and beyond
/// that with everything but its bottom row in an area that scrolls.
///
/// Owns    nothing: the dialog, its parent, outlives it
/// Thread  GUI thread only
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

} // namespace vx

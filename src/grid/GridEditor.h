#pragma once

#include "grid/GridTheme.h"

#include <QLineEdit>

namespace vx {

/// How an edit ends: given up, or taken over with the focus staying or moving on.
enum class EEditEnd : uint8_t { Cancel, Stay, Down, Up, Right, Left };

/// The line in which a grid's cell is edited in place. It says how the user ends it; the grid places, shows and hides
/// it.
///
/// Shape   at most 255 characters; object name "gridEditor"
/// Thread  GUI thread only
class CGridEditor : public QLineEdit {
    Q_OBJECT

public:
    explicit CGridEditor(QWidget* viewport);

    void SetLook(const QFont& font, Qt::Alignment alignment, const SGridTheme& theme);
    /// Takes the text to start with. While the user types a new text instead of changing the old one, the arrows up
    /// and down end the edit like Enter.
    void Start(const QString& text, bool typed);
    void SetTyped(bool typed) { m_typed = typed; }
    /// The width that shows the text and the caret, in logical pixels.
    int NeededWidth() const;

Q_SIGNALS:
    void Ended(vx::EEditEnd end);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool EndByKey(const QKeyEvent& event, EEditEnd& end) const;

    bool m_typed = false;
    QRgb m_frame = 0;
};

} // namespace vx

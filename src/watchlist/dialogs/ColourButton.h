#pragma once

#include <QToolButton>

#include <cstdint>

namespace vx {

/// A button that shows a colour and lets the user choose another: the theme's own, one of a few that can be read in
/// light and dark, or any other.
///
/// Units   colours 0xBBGGRR, SCellFormat::kAutomatic for the theme's
/// Thread  GUI thread only
class CColourButton : public QToolButton {
    Q_OBJECT
public:
    explicit CColourButton(QWidget* parent = nullptr);

    void SetColour(int32_t colour);
    int32_t Colour() const { return m_colour; }

Q_SIGNALS:
    /// The user chose a colour.
    void ColourChosen(int32_t colour);

private:
    void Choose(int32_t colour);
    void ChooseAny();

    int32_t m_colour = -1;
};

} // namespace vx

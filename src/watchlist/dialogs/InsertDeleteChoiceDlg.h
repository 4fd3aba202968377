#pragma once

#include <QDialog>

class QRadioButton;

namespace vx {

/// Asks whether rows or columns are meant, when what is selected does not say. It opens with rows chosen, whatever was
/// chosen the last time.
///
/// Thread  GUI thread only
class CInsertDeleteChoiceDlg : public QDialog {
    Q_OBJECT
public:
    enum class EWhat { Insert, Delete };

    /// rows, columns: how many of each are selected.
    CInsertDeleteChoiceDlg(EWhat what, int rows, int columns, QWidget* parent);

    bool IsRows() const;

private:
    QRadioButton* m_rows;
    QRadioButton* m_columns;
};

} // namespace vx

#pragma once

#include <QDialog>

class QButtonGroup;
class QCheckBox;
class QVBoxLayout;

namespace vx {

/// The dialog in which the user says how the watchlist is to be exported: values or link formulas, the separator, a
/// first line of column names, and whether a file is added to or replaced.
///
/// Shape   begins with the first choice of each group, whatever was chosen the last time
/// Thread  GUI thread only
class CQuoteDataOptions : public QDialog {
    Q_OBJECT
public:
    explicit CQuoteDataOptions(QWidget* parent);

    bool Formulas() const;
    bool TabDelimited() const;
    bool ColumnHeaders() const;
    bool Overwrite() const;

private:
    QButtonGroup* AddGroup(QVBoxLayout& layout, const QString& title, const char* first, const char* second);

    QButtonGroup* m_export;
    QButtonGroup* m_format;
    QCheckBox* m_headers;
    QButtonGroup* m_file;
};

} // namespace vx

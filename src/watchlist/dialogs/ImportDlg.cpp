// SPDX-License-Identifier: MIT
#include "watchlist/dialogs/ImportDlg.h"

#include "base/qt/QtText.h"
#include "watchlist/edit/ImportText.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vx {

namespace {

QString Counted(size_t count, const char* one, const char* many) {
    return QStringLiteral("%L1 %2").arg(count).arg(QString::fromLatin1(count == 1 ? one : many));
}

/// A list of texts that can be looked through but not changed, under a caption.
void AddList(QVBoxLayout& layout, const char* name, const QString& caption, const QStringList& lines, size_t count,
             bool besideEachOther) {
    if (count == 0) return;
    auto* label = new QLabel(caption);
    auto* list = new QPlainTextEdit;
    list->setObjectName(QString::fromLatin1(name));
    list->setReadOnly(true);
    list->setTabChangesFocus(true);
    QString text = lines.join(besideEachOther ? QStringLiteral(", ") : QStringLiteral("\n"));
    if (count > static_cast<size_t>(lines.size()))
        text += QStringLiteral("\n... and %L1 more").arg(count - static_cast<size_t>(lines.size()));
    list->setPlainText(text);
    list->setMinimumHeight(list->fontMetrics().lineSpacing() * 4);
    label->setBuddy(list);
    layout.addWidget(label);
    layout.addWidget(list, 1);
}

QStringList QtList(const std::vector<std::string>& texts, size_t most) {
    QStringList out;
    for (size_t i = 0; i < std::min(texts.size(), most); ++i) out << QtText(texts[i]);
    return out;
}

} // namespace

CImportDlg::CImportDlg(const SImportPreview& preview, const QString& source, int row, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("importDialog"));
    setWindowTitle(QStringLiteral("Import Symbols"));
    auto* layout = new QVBoxLayout(this);
    auto* from = new QLabel(QStringLiteral("From %1").arg(source));
    from->setTextFormat(Qt::PlainText);
    from->setWordWrap(true);
    layout->addWidget(from);
    if (preview.toAdd.empty()) {
        auto* nothing = new QLabel(QStringLiteral("There is no symbol in it that is not in the watchlist already."));
        nothing->setObjectName(QStringLiteral("nothing"));
        layout->addWidget(nothing);
    }
    AddList(*layout, "toAdd",
            QStringLiteral("%1 would be &added from row %L2 on:")
                .arg(Counted(preview.toAdd.size(), "symbol", "symbols"))
                .arg(row),
            QtList(preview.toAdd, SImportPreview::kMostKept), preview.toAdd.size(), true);
    AddList(*layout, "alreadyThere",
            preview.alreadyThereCount == 1
                ? QStringLiteral("1 symbol is in the &watchlist already:")
                : QStringLiteral("%L1 symbols are in the &watchlist already:").arg(preview.alreadyThereCount),
            QtList(preview.alreadyThere, SImportPreview::kMostKept), preview.alreadyThereCount, true);
    AddList(*layout, "duplicates",
            preview.duplicateCount == 1
                ? QStringLiteral("1 symbol is &repeated; it counts once:")
                : QStringLiteral("%L1 symbols are &repeated; they count once:").arg(preview.duplicateCount),
            QtList(preview.duplicates, SImportPreview::kMostKept), preview.duplicateCount, true);
    QStringList lines;
    for (const SImportPreview::SNotUnderstood& piece : preview.notUnderstood)
        lines << QStringLiteral("line %L1: %2").arg(piece.line).arg(QtText(piece.text));
    AddList(*layout, "notUnderstood",
            preview.notUnderstoodCount == 1
                ? QStringLiteral("1 text was not &understood and is left out:")
                : QStringLiteral("%L1 texts were not &understood and are left out:").arg(preview.notUnderstoodCount),
            lines, preview.notUnderstoodCount, false);
    if (preview.unreadFrom > 0)
        layout->addWidget(new QLabel(QStringLiteral("Reading ended in line %L1: a watchlist has room for %L2 symbols.")
                                         .arg(preview.unreadFrom)
                                         .arg(preview.toAdd.size())));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(!preview.toAdd.empty());
    if (!preview.toAdd.empty())
        ok->setText(QStringLiteral("Add %1").arg(Counted(preview.toAdd.size(), "Symbol", "Symbols")));
    buttons->button(preview.toAdd.empty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok)->setDefault(true);
    buttons->button(preview.toAdd.empty() ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok)->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumWidth(440);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include "app/windows/GuideDlg.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QHBoxLayout>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTextBlock>
#include <QTextTable>
#include <QVBoxLayout>

#include <utility>

namespace vx {

namespace {

constexpr const char* kGuide = "qrc:/docs/user-guide.md";
constexpr int kWidthPx = 900;
constexpr int kHeightPx = 640;
constexpr int kSectionsPx = 180;
constexpr int kPageMarginPx = 14;
constexpr int kHeadingMarginPx = 16;
constexpr int kCellPaddingPx = 4;

} // namespace

CGuideBrowser::CGuideBrowser(QWidget* parent) : QTextBrowser(parent) {
    setObjectName(QStringLiteral("guidePage"));
    setAccessibleName(QStringLiteral("Page of the guide"));
    setOpenExternalLinks(true);
    document()->setDocumentMargin(kPageMarginPx);
    // A link leads to its heading right after the page is there: the marks must be too.
    connect(this, &QTextBrowser::textChanged, this, &CGuideBrowser::Polish);
}

// The toolkit reads neither the names of headings nor how a table should look.
void CGuideBrowser::Polish() {
    if (std::exchange(m_polishing, true)) return;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0) PolishHeading(block);
    PolishTables();
    m_polishing = false;
}

void CGuideBrowser::PolishHeading(const QTextBlock& block) {
    QTextCursor cursor(block);
    QTextBlockFormat space;
    space.setTopMargin(kHeadingMarginPx);
    cursor.mergeBlockFormat(space);
    cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
    QTextCharFormat mark;
    mark.setAnchor(true);
    mark.setAnchorNames({Anchor(block.text())});
    cursor.mergeCharFormat(mark);
}

void CGuideBrowser::PolishTables() {
    for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        QTextTableFormat look = table->format();
        look.setBorder(1);
        look.setBorderCollapse(true);
        look.setBorderBrush(palette().color(QPalette::Mid));
        look.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        look.setCellPadding(kCellPaddingPx);
        look.setCellSpacing(0);
        look.setTopMargin(kCellPaddingPx);
        look.setBottomMargin(kPageMarginPx);
        table->setFormat(look);
    }
}

// Colours of links and lines are those of the palette that the page was made with.
void CGuideBrowser::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !source().isEmpty()) reload();
}

QString CGuideBrowser::Anchor(const QString& heading) {
    QString out;
    for (const QChar c : heading.toLower())
        if (c.isLetterOrNumber() || c == QLatin1Char('-'))
            out += c;
        else if (c == QLatin1Char(' '))
            out += QLatin1Char('-');
    return out;
}

QVariant CGuideBrowser::loadResource(int type, const QUrl& name) {
    if (name.scheme() != QLatin1String("qrc")) return {};
    QFile file(QLatin1Char(':') + name.path());
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray content = file.readAll();
    if (type != QTextDocument::ImageResource) return QString::fromUtf8(content);
    QImage image = QImage::fromData(content);
    const int room = viewport()->width() - 2 * kPageMarginPx;
    if (room > 0 && image.width() > room) image = image.scaledToWidth(room, Qt::SmoothTransformation);
    return image;
}

// A page that is not part of the program would leave an empty one.
void CGuideBrowser::doSetSource(const QUrl& url, QTextDocument::ResourceType type) {
    const QUrl page = source().resolved(url);
    if (page.scheme() == QLatin1String("qrc") && QFile::exists(QLatin1Char(':') + page.path()))
        QTextBrowser::doSetSource(page, type);
}

CGuideDlg::CGuideDlg(QWidget* parent) : QDialog(parent), m_sections(new QListWidget), m_page(new CGuideBrowser(this)) {
    setObjectName(QStringLiteral("guide"));
    setWindowTitle(QStringLiteral("User Guide"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    m_sections->setObjectName(QStringLiteral("guideSections"));
    m_sections->setAccessibleName(QStringLiteral("Sections"));

    auto* panes = new QSplitter;
    panes->addWidget(m_sections);
    panes->addWidget(m_page);
    panes->setStretchFactor(1, 1);
    panes->setSizes({kSectionsPx, kWidthPx - kSectionsPx});
    auto* back = new QPushButton(QStringLiteral("&Back"));
    back->setObjectName(QStringLiteral("guideBack"));
    back->setAutoDefault(false);
    back->setEnabled(false);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(back);
    bottom->addWidget(buttons, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(panes, 1);
    layout->addLayout(bottom);
    resize(kWidthPx, kHeightPx);

    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(back, &QPushButton::clicked, m_page, &QTextBrowser::backward);
    connect(m_page, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(m_page, &QTextBrowser::sourceChanged, this, &CGuideDlg::ListSections);
    connect(m_sections, &QListWidget::currentTextChanged, m_page,
            [this](const QString& heading) { m_page->scrollToAnchor(CGuideBrowser::Anchor(heading)); });
    m_page->setFocus();
}

// Pictures are made for the width that the page has.
void CGuideDlg::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (m_page->source().isEmpty()) m_page->setSource(QUrl(QString::fromLatin1(kGuide)));
}

void CGuideDlg::ListSections() {
    QStringList headings;
    for (QTextBlock block = m_page->document()->begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() == 2) headings += block.text();
    QStringList shown;
    for (int row = 0; row < m_sections->count(); ++row) shown += m_sections->item(row)->text();
    if (headings == shown) return;
    m_sections->clear();
    m_sections->addItems(headings);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QTextBrowser>

class QListWidget;
class QTextBlock;

namespace vx {

/// Shows a page of the program's documentation, which is part of the program, and follows its links.
class CGuideBrowser : public QTextBrowser {
    Q_OBJECT
public:
    explicit CGuideBrowser(QWidget* parent);

    /// The name by which a link leads to a heading: "#lists-and-rows" to "Lists and rows".
    static QString Anchor(const QString& heading);

protected:
    /// Pictures are no wider than the window.
    QVariant loadResource(int type, const QUrl& name) override;
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
    void changeEvent(QEvent* event) override;

private:
    void Polish();
    void PolishHeading(const QTextBlock& block);
    void PolishTables();

    bool m_polishing = false;
};

/// The user guide, with its sections beside it.
class CGuideDlg : public QDialog {
    Q_OBJECT
public:
    explicit CGuideDlg(QWidget* parent);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void ListSections();

    QListWidget* m_sections;
    CGuideBrowser* m_page;
};

} // namespace vx

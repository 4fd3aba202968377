// SPDX-License-Identifier: MIT
#include "app/files/FileDialogs.h"

#include "app/frame/ProgramName.h"
#include "base/MessageBox.h"
#include "base/Windows1252.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QSize>

#include <fmt/format.h>

namespace vx {

namespace {

// Wide enough for names and dates to be read.
constexpr QSize kDialogSize{780, 480};

void Prepare(QFileDialog& dialog, const SFileQuestion& question) {
    dialog.setObjectName(QStringLiteral("fileDialog"));
    dialog.resize(kDialogSize);
    dialog.setDirectory(QDir::currentPath());
    dialog.setNameFilters(question.filters.split(QStringLiteral(";;")));
    dialog.setDefaultSuffix(question.suffix);
    if (!question.proposal.empty()) dialog.selectFile(QFile::decodeName(question.proposal.c_str()));
}

// What the dialog was closed with. Its selection may be another one by the time it is gone: it follows the folder.
std::string Ask(QFileDialog& dialog) {
    QString file;
    const auto heard = QObject::connect(&dialog, &QFileDialog::fileSelected, &dialog,
                                        [&file](const QString& chosen) { file = chosen; });
    const bool accepted = dialog.exec() == QDialog::Accepted;
    QObject::disconnect(heard);
    return accepted ? QFile::encodeName(file).toStdString() : std::string();
}

bool MayReplace(const std::string& path) {
    return ShowMessageBox({fmt::format("The file \"{}\" exists already. Replace it?", Windows1252FromUtf8(path)),
                           kProgramName, EBoxButtons::YesNo, EBoxIcon::Question}) == EBoxAnswer::Yes;
}

} // namespace

QString WatchlistFilters() { return QStringLiteral("Watchlists (*.vxw);;All Files (*)"); }

std::string AskForFileToOpen(QWidget* parent, const SFileQuestion& question) {
    QFileDialog dialog(parent, question.title);
    Prepare(dialog, question);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}

std::string AskForFileToSave(QWidget* parent, const SFileQuestion& question) {
    QFileDialog dialog(parent, question.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // The toolkit would ask before the suffix is there, and in a box of its own.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    Prepare(dialog, question);
    for (;;) {
        const std::string path = Ask(dialog);
        if (path.empty() || !question.overwrites || !QFileInfo::exists(QFile::decodeName(path.c_str())) ||
            MayReplace(path))
            return path;
    }
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertSoundBox.h"

#include "base/MessageBox.h"
#include "base/qt/QtText.h"
#include "settings/Settings.h"
#include "settings/ValidateSetting.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace vx {

namespace {

constexpr int kListCharacters = 18;
constexpr const char* kFilter = "Wave File (*.wav)";
constexpr const char* kDefaultSuffix = "wav";

/// A list of paths: of a long one the end is shown, where the file's name stands.
class CPathList : public QComboBox {
protected:
    void paintEvent(QPaintEvent*) override {
        constexpr int kTextMargin = 4;
        QStyleOptionComboBox option;
        initStyleOption(&option);
        const QRect room = style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
        option.currentText =
            option.fontMetrics.elidedText(option.currentText, Qt::ElideLeft, room.width() - kTextMargin);
        QStylePainter painter(this);
        painter.drawComplexControl(QStyle::CC_ComboBox, option);
        painter.drawControl(QStyle::CE_ComboBoxLabel, option);
    }
};

// The separators of what an alert is written into.
bool CanCarry(const QString& path) {
    return QtText(BytesFromQt(path)) == path && !path.contains(QLatin1Char(',')) && !path.contains(QLatin1Char(';'));
}

} // namespace

CAlertSoundBox::CAlertSoundBox(const SAlertDialogServices& services, QWidget* parent)
    : QWidget(parent), m_services(services), m_list(new CPathList), m_play(new QPushButton),
      m_remove(new QPushButton(QStringLiteral("&Remove"))) {
    m_list->setObjectName(QStringLiteral("soundList"));
    m_list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_list->setMinimumContentsLength(kListCharacters);
    m_play->setObjectName(QStringLiteral("play"));
    m_play->setAutoDefault(false);
    auto* browse = new QPushButton(QStringLiteral("&Browse..."));
    browse->setObjectName(QStringLiteral("browse"));
    browse->setToolTip(QStringLiteral("Choose a wave file"));
    browse->setAutoDefault(false);
    m_remove->setObjectName(QStringLiteral("removeSound"));
    m_remove->setToolTip(QStringLiteral("Remove the chosen wave file from the list; the file itself stays"));
    m_remove->setAutoDefault(false);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_play);
    layout->addWidget(browse);
    layout->addWidget(m_remove);
    setFocusProxy(m_list);
    Fill();
    connect(m_list, &QComboBox::currentIndexChanged, this, [this](int) {
        if (m_playing) m_services.player.Stop();
        m_list->setToolTip(PlainTipText(QtText(SoundFile())));
        ShowPlaying(false);
    });
    connect(m_play, &QPushButton::clicked, this, &CAlertSoundBox::TogglePlay);
    connect(browse, &QPushButton::clicked, this, &CAlertSoundBox::Browse);
    connect(m_remove, &QPushButton::clicked, this, &CAlertSoundBox::TakeOff);
    ShowPlaying(false);
}

CAlertSoundBox::~CAlertSoundBox() {
    if (m_playing) m_services.player.Stop();
}

void CAlertSoundBox::Fill() {
    m_list->addItems({QStringLiteral("None"), QStringLiteral("Default")});
    for (const STextSetting* setting : kSoundFiles)
        if (const std::string file = m_services.settings.ReadText(*setting); !file.empty()) {
            m_list->addItem(QtText(file));
            if (file != kConfigError) m_first.insert(file);
        }
}

void CAlertSoundBox::Choose(uint32_t soundType, const std::string& soundFile) {
    if (soundType < kFirstFile) return m_list->setCurrentIndex(static_cast<int>(soundType));
    const QString text = QtText(soundFile);
    int index = m_list->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < kFirstFile) {
        m_list->addItem(text);
        index = m_list->count() - 1;
    }
    m_list->setCurrentIndex(index);
}

uint32_t CAlertSoundBox::SoundType() const {
    const int index = m_list->currentIndex();
    if (index < kFirstFile) return static_cast<uint32_t>(std::max(index, 0));
    return static_cast<uint32_t>(EAlertSound::WaveFile);
}

std::string CAlertSoundBox::SoundFile() const {
    return m_list->currentIndex() < kFirstFile ? std::string{} : BytesFromQt(m_list->currentText());
}

// The text of a setting that cannot be read is no file. Only what this list began with is emptied: another window
// may have added a file since.
void CAlertSoundBox::SaveFiles() const {
    for (size_t n = 0; n < kSoundFiles.size(); ++n) {
        std::string file = BytesFromQt(m_list->itemText(kFirstFile + static_cast<int>(n)));
        if (file == kConfigError) file.clear();
        const std::string stored = m_services.settings.ReadText(*kSoundFiles[n]);
        const bool write = file.empty() ? m_first.contains(stored) : stored != file;
        if (write) m_services.settings.WriteText(*kSoundFiles[n], file);
    }
}

void CAlertSoundBox::TakeOff() {
    const int chosen = m_list->currentIndex();
    m_list->setCurrentIndex(static_cast<int>(EAlertSound::BuiltIn));
    m_list->removeItem(chosen);
}

void CAlertSoundBox::Browse() {
    auto* dialog = new QFileDialog(this, QStringLiteral("Sound for the Alert"));
    dialog->setObjectName(QStringLiteral("soundFileDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(QString::fromLatin1(kFilter));
    dialog->setDefaultSuffix(QString::fromLatin1(kDefaultSuffix));
    if (const std::string now = SoundFile(); !now.empty()) dialog->setDirectory(QFileInfo(QtText(now)).absolutePath());
    connect(dialog, &QFileDialog::fileSelected, this, &CAlertSoundBox::AddFile);
    dialog->setModal(true);
    dialog->show();
}

void CAlertSoundBox::AddFile(const QString& path) {
    if (CanCarry(path)) return Choose(static_cast<uint32_t>(EAlertSound::WaveFile), BytesFromQt(path));
    ShowMessageBox({.text = "An alert cannot keep the name of this file: it may hold no comma, no semicolon and no "
                            "letters beyond those of Western Europe.\n\nPlease choose another file.",
                    .caption = {},
                    .icon = EBoxIcon::Exclamation});
}

void CAlertSoundBox::TogglePlay() {
    if (m_playing) {
        m_services.player.Stop();
        return ShowPlaying(false);
    }
    ShowPlaying(true);
    m_services.player.Play({SoundType(), SoundFile(), false}, [this] {
        m_services.player.Stop(); // A sound longer than the limit counts as ended but would play on.
        ShowPlaying(false);
    });
}

void CAlertSoundBox::ShowPlaying(bool playing) {
    const bool muted = m_services.isMuted && m_services.isMuted();
    m_playing = playing;
    m_play->setText(playing ? QStringLiteral("S&top") : QStringLiteral("&Play"));
    m_play->setEnabled(m_list->currentIndex() > 0 && !muted);
    m_remove->setEnabled(m_list->currentIndex() >= kFirstFile);
    m_play->setToolTip(muted ? QStringLiteral("Sounds are muted") : QStringLiteral("Play the sound"));
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include "alerts/ui/AlertSoundPlayer.h"

#include "alerts/rules/WaveFile.h"
#include "base/qt/QtText.h"

#include <QAudioDevice>
#include <QFile>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

constexpr const char* kBuiltInWave = "qrc:/alert.wav";
constexpr int64_t kBuiltInMs = 1000;
// Loading the file and opening the output come before the first sample.
constexpr int64_t kStartMs = 2000;

} // namespace

CEffectSoundPlayer::CEffectSoundPlayer(QObject* parent) : QObject(parent) {
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &CEffectSoundPlayer::End);
}

CEffectSoundPlayer::~CEffectSoundPlayer() { Stop(); }

void CEffectSoundPlayer::Play(const SAlertSound& sound, std::function<void()> ended) {
    Stop();
    m_ended = std::move(ended);
    if (sound.type == static_cast<uint32_t>(EAlertSound::BuiltIn)) {
        Start(QUrl(QString::fromLatin1(kBuiltInWave)), sound.loop, kBuiltInMs);
    } else if (sound.type == static_cast<uint32_t>(EAlertSound::WaveFile)) {
        const QString path = QFileInfo(QtText(sound.file)).absoluteFilePath();
        // Checked first: loading would wait for a pipe's other end.
        if (const auto info = ReadWaveInfo(QFile::encodeName(path).toStdString()))
            Start(QUrl::fromLocalFile(path), sound.loop, info->durationMs);
        else
            EndSoon();
    } else {
        EndSoon();
    }
}

// Without an output a sound would never end.
void CEffectSoundPlayer::Start(const QUrl& source, bool loop, int64_t durationMs) {
    if (QMediaDevices::audioOutputs().isEmpty()) return EndSoon();
    auto* effect = new QSoundEffect(this);
    m_effect = effect;
    connect(effect, &QSoundEffect::playingChanged, this, [this, effect] {
        if (effect == m_effect && !effect->isPlaying()) EndSoon();
    });
    connect(effect, &QSoundEffect::statusChanged, this, [this, effect] {
        if (effect == m_effect && effect->status() == QSoundEffect::Error) EndSoon();
    });
    effect->setLoopCount(loop ? static_cast<int>(QSoundEffect::Infinite) : 1);
    if (!loop) m_end.start(static_cast<int>(std::min<int64_t>(kMostMs, durationMs + kStartMs)));
    effect->setSource(source);
    effect->play();
}

void CEffectSoundPlayer::EndSoon() { m_end.start(0); }

void CEffectSoundPlayer::End() {
    if (const auto ended = std::exchange(m_ended, {})) ended();
}

void CEffectSoundPlayer::Stop() {
    m_end.stop();
    m_ended = {};
    if (QSoundEffect* effect = std::exchange(m_effect, nullptr)) {
        effect->disconnect(this);
        effect->stop();
        effect->deleteLater();
    }
}

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <string>

class QSoundEffect;
class QUrl;

namespace vx {

/// One sound as an alert has it.
struct SAlertSound {
    uint32_t type = 0; ///< An EAlertSound; other codes are silent.
    std::string file;  ///< Path of the wave file, Windows-1252, when the type says so.
    bool loop = false; ///< Again and again until it is stopped.

    bool operator==(const SAlertSound&) const = default;
};

/// Plays the sounds of alerts, one at a time. Tests replace it by a recorder.
///
/// Errors  none: what cannot be played has ended
/// Thread  GUI thread only; nothing waits
class CAlertSoundPlayer {
public:
    /// A sound that is not repeated counts as ended after this long at the latest.
    static constexpr int kMostMs = 30'000;

    virtual ~CAlertSoundPlayer() = default;

    /// Starts a sound in place of the one that plays. ended: called once when the sound has ended by itself, and never
    /// from inside; not called once it was stopped or replaced.
    virtual void Play(const SAlertSound& sound, std::function<void()> ended) = 0;
    virtual void Stop() = 0;
};

/// Plays alert sounds on the default audio output. Without one nothing plays, and every sound has ended at once.
class CEffectSoundPlayer : public QObject, public CAlertSoundPlayer {
    Q_OBJECT
public:
    explicit CEffectSoundPlayer(QObject* parent = nullptr);
    ~CEffectSoundPlayer() override;

    void Play(const SAlertSound& sound, std::function<void()> ended) override;
    void Stop() override;

private:
    void Start(const QUrl& source, bool loop, int64_t durationMs);
    void EndSoon();
    void End();

    QPointer<QSoundEffect> m_effect;
    QTimer m_end; ///< The sound has ended, or is counted so.
    std::function<void()> m_ended;
};

} // namespace vx

#pragma once

#include "alerts/ui/AlertSoundPlayer.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class QSoundEffect;
class QUrl;

namespace vx {

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

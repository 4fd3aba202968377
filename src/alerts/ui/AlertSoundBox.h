// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/ui/AlertDialogServices.h"
#include "alerts/ui/AlertSoundPlayer.h"

#include <QWidget>

#include <set>
#include <string>

class QComboBox;
class QPushButton;
class QToolButton;

namespace vx {

/// The choice of an alert's sound: "None", "Default" and wave files in a list, a button that looks for another file,
/// one that takes the chosen file off the list, and one that plays the choice.
class CAlertSoundBox : public QWidget {
    Q_OBJECT
public:
    /// Places in the list: two fixed ones, then files.
    static constexpr int kFirstFile = 2;

    explicit CAlertSoundBox(const SAlertDialogServices& services, QWidget* parent = nullptr);
    ~CAlertSoundBox() override;

    QComboBox& List() const { return *m_list; }
    /// Chooses a sound; a file that is not in the list is added to it.
    void Choose(uint32_t soundType, const std::string& soundFile);
    uint32_t SoundType() const;
    std::string SoundFile() const;
    /// Writes the list's files to the settings, as many as there are settings for, and empties the settings of those
    /// that were taken off.
    void SaveFiles() const;

    /// Adds a file that the user found, and chooses it.
    ///
    /// Errors  a message box for a path that an alert cannot carry
    void AddFile(const QString& path);

private:
    void Fill();
    void Browse();
    void TakeOff();
    void TogglePlay();
    void ShowPlaying(bool playing);

    const SAlertDialogServices& m_services;
    QComboBox* m_list;
    QPushButton* m_play;
    QPushButton* m_remove;
    std::set<std::string> m_first; ///< The files that the list began with.
    bool m_playing = false;
};

} // namespace vx

#include "Clip_Sounds.h"

#include <QApplication>
#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

#include "Kt_forms.h"

namespace Kt_forms {

bool Has_Sound() {
  return !QMediaDevices::defaultAudioOutput().isNull();
}

TClip_Sounds::TClip_Sounds() = default;
TClip_Sounds::~TClip_Sounds() = default;

void TClip_Sounds::Play(int number) {
  // Asked each time: loudspeakers come and go, and without any the effect would "play" for ever.
  if (!Kt_util_01::Read_Bool("Sounds", "Interface", true) || !Has_Sound()) return;
  const QString file = QStringLiteral(":/clips/%1.wav").arg(number);
  if (!QFile::exists(file)) return;
  auto& clip = clips[number];
  if (!clip) {
    clip = std::make_unique<QSoundEffect>();
    clip->setSource(QUrl(QStringLiteral("qrc") + file));
  }
  clip->play();
}

bool Message_Beep() {
  QApplication::beep();
  return Has_Sound();
}

bool Play_Sound_File(const std::string& path) {
  if (!Has_Sound() || !QFile::exists(To_Qt(path))) return false;
  static const auto effect = std::make_unique<QSoundEffect>();
  effect->setSource(QUrl::fromLocalFile(To_Qt(path)));
  if (effect->status() == QSoundEffect::Error) return false;
  effect->play();
  return true;
}

}  // namespace Kt_forms

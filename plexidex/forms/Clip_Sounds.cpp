#include "Clip_Sounds.h"

#include <QApplication>
#include <QAudioDevice>
#include <QDateTime>
#include <QFileInfo>
#include <QMap>
#include <QMediaDevices>
#include <QPointer>
#include <QSoundEffect>
#include <QUrl>
#include <QtEndian>

#include "Kt_forms.h"

namespace Kt_forms {

namespace {

// Whether all is there that a .wav file says of itself. An effect waits for ever for the rest of one that was
// cut short, and whoever removes the effect waits with it.
bool Is_Whole(const QString& path) {
  QFile file(path);
  constexpr qint64 of_file = 12, of_part = 8;
  if (!file.open(QIODevice::ReadOnly)) return false;
  const QByteArray start = file.read(of_file);
  if (!start.startsWith("RIFF") || !start.endsWith("WAVE")) return false;
  for (;;) {
    const QByteArray part = file.read(of_part);
    if (part.size() < of_part) return false;
    const auto size = qint64{qFromLittleEndian<quint32>(part.constData() + 4)};
    if (part.startsWith("data")) return file.pos() + size <= file.size();
    // Parts begin at even places.
    if (!file.seek(file.pos() + size + size % 2)) return false;
  }
}

}  // namespace

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
  return Has_Sound() && Play_Or(path, Message_Beep);
}

bool Play_Or(const std::string& path, const std::function<void()>& otherwise) {
  static QPointer<QSoundEffect> effect;
  static QMap<QString, QDateTime> unplayable;  // which effects say of a file only once
  const QString file = To_Qt(path);
  const QDateTime written = QFileInfo(file).lastModified();
  if ((unplayable.contains(file) && unplayable[file] == written) || !Is_Whole(file)) return false;
  delete effect;
  effect = new QSoundEffect(qApp);
  // Only when the file has been loaded is it known whether it can be played.
  QObject::connect(effect, &QSoundEffect::statusChanged, effect, [file, written, otherwise] {
    if (effect->status() != QSoundEffect::Error) return;
    unplayable[file] = written;
    otherwise();
  });
  effect->setSource(QUrl::fromLocalFile(file));
  effect->play();
  return true;
}

}  // namespace Kt_forms

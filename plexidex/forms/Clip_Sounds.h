#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "Kt_util_01.h"

class QSoundEffect;

namespace Kt_forms {

/// The interface's sounds as short clips. A machine without sound stays silent.
class TClip_Sounds : public Kt_util_01::TSounds {
 public:
  TClip_Sounds();
  ~TClip_Sounds() override;
  void Play(int number) override;

 private:
  std::map<int, std::unique_ptr<QSoundEffect>> clips;
};

/// Whether there is anything to play sounds on.
bool Has_Sound();

/// Plays a .wav file instead of the one before. False when there is none or not the whole of one, or
/// when it is known that it cannot be played; calls `otherwise` later when that turns out.
bool Play_Or(const std::string& path, const std::function<void()>& otherwise);

}  // namespace Kt_forms

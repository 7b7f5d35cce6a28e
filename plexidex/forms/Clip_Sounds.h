#pragma once

#include <map>
#include <memory>

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

}  // namespace Kt_forms

#include <optional>
#include <string>

#include "Kt_find.h"

namespace Kt_util_01 {

namespace {

class TPlain_Notes final : public TNotes_Control {
 public:
  void Set_Text(std::string_view notes) override { text = notes; }
  bool Is_Empty() override { return text.empty(); }
  bool Find(std::string_view wanted, std::size_t limit, bool match_case, bool whole_word) override {
    if (!finder || wanted != last || match_case != last_case || whole_word != last_word) {
      finder.emplace(wanted, match_case, whole_word);
      last = wanted;
      last_case = match_case;
      last_word = whole_word;
    }
    return finder->Find(First_Characters(text, limit)).has_value();
  }

 private:
  std::string_view text;
  // A search asks for the same in the notes of all contacts.
  std::optional<TText_Finder> finder;
  std::string last;
  bool last_case = false, last_word = false;
};

TNotes_Control* Installed = nullptr;

}  // namespace

void Install_Notes_Control(TNotes_Control* control) {
  Installed = control;
}

TNotes_Control& Search_Notes_Control() {
  static TPlain_Notes plain;
  return Installed ? *Installed : plain;
}

}  // namespace Kt_util_01

#include "Alarm_Sounds.h"

#include <filesystem>

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

namespace {

bool Is_File(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

bool Is_Sound(const std::filesystem::path& path) {
  return UpperCase(path.extension().string()) == ".WAV" && Is_File(path.string());
}

std::string With_Separator(std::string folder) {
  const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
  if (folder.empty() || folder.back() != separator) folder += separator;
  return folder;
}

}  // namespace

std::string TSound_List::Stored_Value() const {
  const std::string& item = Items[static_cast<std::size_t>(Selected)];
  if (Selected < 2) return item;
  const std::string file = Folder + item;
  return Is_File(file) ? file : std::string();
}

std::string TSound_List::Default_Value() const {
  return Selected < 2 ? Standard_Beep_Text : Folder + Items[static_cast<std::size_t>(Selected)];
}

std::string TSound_List::Preview_Value() const {
  return Selected == 0 ? Read_Default_Sound() : Default_Value();
}

TSound_List Build_WAV_List(const std::string& current) {
  TSound_List list;
  const bool is_file = !current.empty() && Is_File(current);
  list.Folder =
      With_Separator(is_file ? std::filesystem::path(current).parent_path().string() : Sound_Folder());
  list.Items = {Default_Sound_Text, Standard_Beep_Text};
  std::error_code failed;
  for (std::filesystem::directory_iterator file(list.Folder, failed), end; !failed && file != end;
       file.increment(failed)) {
    if (Is_Sound(file->path())) list.Items.push_back(file->path().filename().string());
  }
  if (!is_file) {
    list.Selected = current == Standard_Beep_Text ? 1 : 0;
    return list;
  }
  const std::string name = std::filesystem::path(current).filename().string();
  for (std::size_t i = 2; i < list.Items.size(); ++i) {
    if (list.Items[i] == name) list.Selected = static_cast<int>(i);
  }
  return list;
}

std::string Sound_Named_As(const std::string& file) {
  const std::string path = With_Separator(Sound_Folder()) + file.substr(file.find_last_of("/\\") + 1);
  return !Sound_Folder().empty() && Is_Sound(path) ? path : std::string();
}

std::string Read_Default_Sound() {
  return Read_String("Sounds", "Default", Standard_Beep_Text);
}
void Write_Default_Sound(const std::string& value) {
  Write_String("Sounds", "Default", value);
}

}  // namespace KTReminds

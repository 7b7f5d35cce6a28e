#pragma once

// Which sounds an alarm may play.

#include <string>
#include <vector>

namespace KTReminds {

/// Sounds that are no files.
inline constexpr const char* Default_Sound_Text = "<Default Sound>";
inline constexpr const char* Standard_Beep_Text = "<Standard Beep>";

/// The sounds of one folder to choose from.
struct TSound_List {
  std::string Folder;              // ends in the separator
  std::vector<std::string> Items;  // the two texts, then bare file names
  int Selected = 0;

  /// What an alarm stores for the selected item: a text as it stands, or the file's path, empty when it is
  /// gone.
  std::string Stored_Value() const;
  /// The same for the user's default sound, which cannot be itself the default sound.
  std::string Default_Value() const;
  /// What a preview of the selected item plays: a file's path, which may be gone, or Standard_Beep_Text.
  std::string Preview_Value() const;
};

/// The folder of `current` with that file selected, or the system's sounds when `current` is no file that
/// exists.
TSound_List Build_WAV_List(const std::string& current);

/// The sound of the system's folder that bears the name of a file; "" when there is none.
std::string Sound_Named_As(const std::string& file);

/// The user's default sound.
std::string Read_Default_Sound();
void Write_Default_Sound(const std::string& value);

}  // namespace KTReminds

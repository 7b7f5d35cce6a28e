#pragma once

// What a row of a list says of its entry.

#include <string>
#include <string_view>

#include "Kt_event_key.h"

namespace KTReminds {

/// State images of list items.
inline constexpr int Image_Open_Event = 10;
inline constexpr int Image_Done_Event = 18;
inline constexpr int Image_Open_Task = 16;
inline constexpr int Image_Done_Task = 17;
inline constexpr int Image_Holiday = 15;

/// Whether the entry is outstanding or done at all: it is an event or a task.
bool Has_State(const Kt_data_01::TEventKey& entry);

/// None for what has no state. An entry of exactly now is not overdue yet.
enum class TEntry_State { None, Outstanding, Overdue, Done };
TEntry_State State_Of(const Kt_data_01::TEventKey& entry, Kt_util_01::TDateTime now);

/// One of the state images; -1 for an entry without a state.
int State_Image(const Kt_data_01::TEventKey& entry);

/// What is said in place of a private entry's text.
inline constexpr std::string_view Hidden_Text = "Private";
/// The text of the row; hides that of a private entry.
std::string_view Row_Text(const Kt_data_01::TEventKey& entry);
/// The row in words: text, time, state.
std::string Spoken_Row(const Kt_data_01::TEventKey& entry, Kt_util_01::TDateTime now);

}  // namespace KTReminds

#include "View_Rules.h"

#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

bool Is_Event_Or_Task(const TEventKey& entry) {
  return entry.EventType == TEntry_Type::Event || entry.Is_Task();
}

bool Allowed(const TText& owner, int level) {
  try {
    return Access_Allowed(owner, level);
  } catch (...) {
    FailRead("View_Rules:Buttons_For [KT_Rights/KT_Users]");
    return false;
  }
}

TToggle Toggle_Of(int image) {
  switch (image) {
    case Image_Open_Event:
    case Image_Open_Task:
      return TToggle::Mark_Done;
    case Image_Done_Event:
    case Image_Done_Task:
      return TToggle::Mark_Outstanding;
    default:
      return TToggle::None;
  }
}

}  // namespace

TView_Buttons Buttons_For(const TList_Item* selected) {
  TView_Buttons buttons;
  if (!selected || !selected->Data || !Is_Event_Or_Task(*selected->Data)) return buttons;
  buttons.Open = true;
  if (selected->Data->Private) return buttons;
  // Copied, since the report of a failed look may give time to change the list.
  const TText owner = selected->Data->Contact;
  const int image = selected->Image;
  buttons.Toggle = Allowed(owner, Access_Update);
  if (buttons.Toggle) buttons.Toggle_To = Toggle_Of(image);
  buttons.Delete = Allowed(owner, Access_Delete);
  return buttons;
}

TToggle_Texts Toggle_Texts(TToggle toggle, std::string_view noun) {
  const std::string marks = "Marks the selected " + std::string(noun);
  if (toggle == TToggle::Mark_Done) return {"Mark Complete", "&Mark Complete", marks + " as being complete"};
  return {"Mark Outstanding", "&Mark Outstanding", marks + " as still being outstanding"};
}

void Click_Sort_Label(int column, int& sort_key, bool& ascending) {
  ascending = sort_key != column || !ascending;
  sort_key = column;
}

std::string Day_Title(TDateTime date) {
  return FormatDateTime(" dddd, dd mmmm yyyy", date);
}

TNotice No_Entry_Notice(bool backwards, std::string_view title) {
  return {backwards ? "No Prior Events" : "No Later Events",
          "No eligible calendar events found " + std::string(backwards ? "prior to" : "after") +
              " the period" + std::string(title)};
}

TEntry_State State_Of(const TEventKey& entry, TDateTime now) {
  if (entry.EventType == TEntry_Type::Other) return TEntry_State::None;
  if (entry.Done) return TEntry_State::Done;
  return CompareDates(entry.EventDate, now) < 0 ? TEntry_State::Overdue : TEntry_State::Outstanding;
}

std::string_view Row_Text(const TEventKey& entry) {
  return entry.Private ? std::string_view("Private") : entry.Description.View();
}

std::string Spoken_Row(const TEventKey& entry, TDateTime now) {
  std::string text(Row_Text(entry));
  if (!entry.Timeless) text += ", " + FormatDateTime("t", entry.EventDate);
  switch (State_Of(entry, now)) {
    case TEntry_State::None:
      return text;
    case TEntry_State::Outstanding:
      return text + ", outstanding";
    case TEntry_State::Overdue:
      return text + ", overdue";
    case TEntry_State::Done:
      return text + ", completed";
  }
  return text;
}

}  // namespace KTReminds

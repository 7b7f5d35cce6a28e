#include "Command_Rules.h"

#include "Entry_Rows.h"
#include "Kt_update.h"

namespace KTReminds {

using namespace Kt_data_01;

namespace {

bool Is_Allowed(const TList_Item* selected, int level) {
  if (!selected || !selected->Data || selected->Data->Private) return false;
  return Read("Command_Rules:May [KT_Rights/KT_Users]",
              [&] { return Access_Allowed(selected->Data->Contact, level); })
      .value_or(false);
}

bool May(const TList_Item* selected, int level) {
  return May_Open(selected) && Is_Allowed(selected, level);
}

}  // namespace

TToggle Toggle_For(const TList_Item* selected) {
  if (!May(selected, Access_Update)) return TToggle::None;
  return selected->Data->Done ? TToggle::Mark_Outstanding : TToggle::Mark_Done;
}

bool May_Delete(const TList_Item* selected) {
  return May(selected, Access_Delete);
}

bool May_Move(const TList_Item* selected) {
  return Is_Allowed(selected, Access_Update) && !selected->Data->Is_Holiday();
}

bool May_Open(const TList_Item* selected) {
  return selected && selected->Data && Has_State(*selected->Data);
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

}  // namespace KTReminds

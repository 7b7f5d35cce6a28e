#pragma once

#include <libical/ical.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Calendar_Index.h"
#include "Import_Budget.h"
#include "Kt_lists.h"
#include "Report.h"

namespace Plexidex {

struct TFree_Component {
  void operator()(icalcomponent* component) const { icalcomponent_free(component); }
};
/// Root of a component tree.
using TComponent_Tree = std::unique_ptr<icalcomponent, TFree_Component>;

/// A component as it stands in a file, and as libical reads it.
struct TRead_Component {
  std::string Text;
  TComponent_Tree Calendar;            // that holds it alone
  icalcomponent* Component = nullptr;  // of that calendar
};

/// Reads the text of one component, within a calendar that takes back what it holds or not. Nothing when
/// libical reads it in another way than its lines say: it must be one component, in which so many begin.
std::optional<TRead_Component> Read_Component_Text(std::string text, bool cancels, std::size_t begun);

/// A calendar file. One pass notes where its components lie; they are read when they are wanted.
class TCalendar_File {
 public:
  /// Throws EImport_Error for a file that cannot be read, is too large, is not a calendar, holds more
  /// components than the budget allows entries, or has a damaged structure: a component without an end, or an
  /// end without a beginning. Progress may be null.
  TCalendar_File(const std::string& file, const TImport_Budget& budget,
                 Kt_data_01::TProgress_Bar* progress = nullptr);

  /// Calendar objects, and each component that is none, in the order of the file. Components of one UID
  /// belong together, whichever calendar of the file they are in.
  std::size_t Object_Count() const { return objects.size(); }
  std::vector<const TIndexed_Component*> Object(std::size_t number) const;
  /// Throws EImport_Error when libical reads it in another way than the structure says.
  TRead_Component Read(const TIndexed_Component& component) const;
  std::vector<TRead_Component> Zones() const;
  std::string UID_Of(const TIndexed_Component& component) const { return index.UID_Of(component); }
  std::string Meaning_Of(const TIndexed_Component& component) const { return index.Meaning_Of(component); }

 private:
  void Group();

  TInput_File input;
  TCalendar_Index index;
  bool ends_with_return = false;
  std::vector<std::uint32_t> order;    // components, those of one object together
  std::vector<std::uint32_t> objects;  // where in the order they begin
};

}  // namespace Plexidex

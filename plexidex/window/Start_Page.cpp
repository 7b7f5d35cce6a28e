#include "Start_Page.h"

#include <QObject>
#include <algorithm>

#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr const char *Section = "Window", *Kind = "Last Node", *Book = "Last Book", *Contact = "Last Contact";
constexpr auto As_Last_Time = "last";

struct TPage {
  const char* Name;
  TNode_Kind Kind;
};

// Stored: never rename.
constexpr TPage Pages[] = {{"calendar", TNode_Kind::Calendar}, {"tasks", TNode_Kind::Tasks},
                           {"contacts", TNode_Kind::Contacts}, {"book", TNode_Kind::Book},
                           {"folder", TNode_Kind::Folder},     {"contact", TNode_Kind::Contact}};

// What of the last node can be found again.
std::string Name_Of(TNode_Kind kind) {
  const auto* page =
      std::find_if(std::begin(Pages), std::end(Pages), [&](const TPage& p) { return p.Kind == kind; });
  return page == std::end(Pages) ? "calendar" : page->Name;
}

}  // namespace

std::vector<std::pair<std::string, QString>> Start_Pages() {
  return {{As_Last_Time, QObject::tr("What was shown last time")},
          {"calendar", QObject::tr("The calendar")},
          {"tasks", QObject::tr("The tasks")},
          {"contacts", QObject::tr("The contacts")},
          {"book", QObject::tr("The coming weeks")}};
}

std::string Chosen_Start_Page() {
  return Read_String("General", "Start Page", As_Last_Time);
}

void Choose_Start_Page(const std::string& name) {
  Write_String("General", "Start Page", name);
}

bool Select_Start_Node(TNavigation_Tree& tree) {
  const std::string last_book = Read_String(Section, Book, ""), chosen = Chosen_Start_Page();
  const std::string name = chosen == As_Last_Time ? Read_String(Section, Kind, "") : chosen;
  const auto* page =
      std::find_if(std::begin(Pages), std::end(Pages), [&](const TPage& p) { return p.Name == name; });
  if (page == std::end(Pages)) return false;
  const std::string key = chosen == As_Last_Time ? Read_String(Section, Contact, "") : "";
  return tree.Select(page->Kind, last_book, key) || tree.Select(page->Kind, tree.Current().Book);
}

void Remember_Node(const TNode& node) {
  Write_String(Section, Kind, Name_Of(node.Kind));
  Write_String(Section, Book, node.Book);
  Write_String(Section, Contact, node.Kind == TNode_Kind::Folder ? node.Folder : node.Contact);
}

}  // namespace Plexidex

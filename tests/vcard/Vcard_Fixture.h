#pragma once

#include <fstream>
#include <regex>

#include "Categories.h"
#include "Database_Test.h"
#include "Store_Check.h"
#include "Templates.h"
#include "Vcard_Export.h"
#include "Vcard_Import.h"

using namespace Plexidex;

/// With an empty book.
struct Vcard_Fixture : TDatabase_Test {
  static std::string With_Ends(const std::string& text) {
    return std::regex_replace(text, std::regex("\\|"), "\r\n");
  }
  /// A card of lines between bars.
  static std::string Card(const std::string& lines, const std::string& version = "4.0") {
    return With_Ends("BEGIN:VCARD|VERSION:" + version + "|" + lines + "|END:VCARD|");
  }
  TVcard_Report Import(const std::string& text) const {
    std::ofstream(folder.File("in.vcf"), std::ios::binary) << text;
    return Import_Vcards(folder.File("in.vcf"), options);
  }
  std::string Export(std::optional<TVcard_Version> version = {}) const {
    Export_Vcards(folder.File("out.vcf"), {}, version, nullptr);
    return File_Content(folder.File("out.vcf"));
  }
  std::string Refusal(const std::string& text) const {
    try {
      Import(text);
    } catch (const EImport_Error& e) {
      return std::regex_replace(e.what(), std::regex("^\"[^\"]*\" "), "");
    }
    return "imported";
  }
  /// "1 added, 2 unchanged; not used: What: why; note: What: why"
  static std::string Told(const TVcard_Report& report) {
    std::string told;
    for (const auto& [count, name] :
         {std::pair(report.Added, "added"), {report.Updated, "updated"}, {report.Unchanged, "unchanged"}}) {
      if (count > 0) told += (told.empty() ? "" : ", ") + std::to_string(count) + " " + name;
    }
    for (const auto& remark : report.Unused) told += "; not used: " + remark.What + ": " + remark.Why;
    for (const auto& remark : report.Notes) told += "; note: " + remark.What + ": " + remark.Why;
    return told;
  }
  static std::vector<TContact> Contacts() { return List_Contacts(List_Books().front().Key, false); }
  static TContact_Details Details(std::size_t number = 0) {
    return Read_Contact_Details(Contacts().at(number).Key);
  }
  /// The contact by name: "Name [Person]|Home: 1|...", with line breaks as "/".
  static std::string Held(std::size_t number = 0) {
    const TContact contact = Contacts().at(number);
    const TContact_Details details = Read_Contact_Details(contact.Key);
    const TTemplate of = Find_Template(details.Template).value();
    std::string held = contact.Name + " [" + of.Name + "]";
    const auto add = [&held](const std::string& label, const std::string& text) {
      if (!text.empty()) held += "|" + label + ": " + std::regex_replace(text, std::regex("\n"), "/");
    };
    for (std::size_t i = 0; i < Template_Fields.size(); ++i)
      add(Field_Name(of, i), details.Fields[Template_Fields[i].Code]);
    for (std::size_t i = 0; i < Other_Fields; ++i) add("Other", details.Other[i]);
    add("Notes", details.Notes);
    add("Categories", Names_Of(Categories_Of(contact.Key)));
    return held;
  }
  static void Change(const std::function<void(TContact& contact, TContact_Details& details)>& change) {
    TContact contact = Contacts().at(0);
    TContact_Details details = Read_Contact_Details(contact.Key);
    change(contact, details);
    In_Update([&] { Write_Contact(contact.Key, contact.Name, details); });
  }

  TTemporary_Folder folder;
  TImport_Options options;
};

#pragma once

#include <memory>

#include "Alert_Watch.h"
#include "Kt_update.h"
#include "Test_Events.h"

using namespace Plexidex;

constexpr double Minute = 1.0 / (24 * 60);

/// A database and a program that shows its reminders, at 8:00 of Monday.
struct TAlert_Test : TDatabase_Test {
  TAlert_Test() { At(8, 0); }
  /// Monday, at a time of day.
  void At(int hour, int minute) { seams.Clock.Value = Monday + (hour * 60 + minute) * Minute; }
  /// Its alarm is so many minutes before, and its first occurrence at this time.
  std::string Add(const std::string& title, int hour, int minute, int offset, int days = 1) const {
    return Add_At(title, Monday + (hour * 60 + minute) * Minute, offset, days);
  }
  static std::string Add_At(const std::string& title, TDateTime first, int offset = 0, int days = 1) {
    TNew_Event event = New_Event(title, first, days);
    event.Alarm.On = true;
    event.Alarm.Offset = offset;
    return Write(event);
  }
  /// Moves an occurrence to a time of Monday.
  static void Move(const std::string& key, int hour, int minute) {
    Change(Events_Data, key, Occurrence_Columns().EventDate, Monday + (hour * 60 + minute) * Minute);
  }
  static void Change(TTable& of, const std::string& key, TField field, const TValue& value) {
    In_Update([&] {
      TTable table(of, "Key");
      ASSERT_TRUE(table.FindKey({key}));
      table.Edit();
      table.Set(field, value);
      PostUpdate(table);
    });
  }
  /// What a program sees that looks: all that waits for an answer, and behind a bar what is new.
  std::string Look() { return Look(*watch); }
  static std::string Look(TAlert_Watch& at) {
    if (!at.Look()) return "-";
    std::string text;
    for (const auto* list : {&at.Entries(), &at.News()}) {
      for (const TAlert_Entry& entry : *list)
        text += (text.empty() || text.ends_with("| ") ? "" : ", ") + entry.Title;
      if (list == &at.Entries()) text += " | ";
    }
    return text;
  }
  /// As after a program that was killed.
  std::string Look_After_Restart() {
    watch = std::make_unique<TAlert_Watch>();
    return Look();
  }
  std::vector<TAlert_Entry> Shown() const { return watch->Entries(); }

  std::unique_ptr<TAlert_Watch> watch = std::make_unique<TAlert_Watch>();
};

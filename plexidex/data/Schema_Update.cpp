#include "Schema_Update.h"

#include <array>
#include <charconv>
#include <regex>

#include "Kt_util_01.h"
#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

// "KTRm", in the header of every database file of this program.
constexpr std::int64_t Application_Id = 0x4B54526D;

void Create_Schema(TEngine& engine) {
  engine.Execute(Creation_Sql(engine));
  engine.Stamp(Application_Id, Schema_Version);
  const TTable_Def& settings = Table_Def("KT_Settings");
  const TColumn_Set name_and_value = 0b11;
  const auto owner = engine.Prepare(Insert_Sql(settings, name_and_value));
  const std::string key = Kt_util_01::Get_GUID();
  owner->Bind(0, std::string_view("Owner"));
  owner->Bind(1, std::string_view(key));
  owner->Step();
}

}  // namespace

void Refuse_Foreign(const TIdentity& found, const std::string& path) {
  if (found.Program != Application_Id && (found.Program != 0 || !found.Empty)) {
    throw EOpen_Error("\"" + path + "\" is a database of another program.");
  }
  if (found.Version > Schema_Version) {
    throw EOpen_Error("\"" + path + "\" was written by a newer version of this program (its schema is " +
                      std::to_string(found.Version) + ", this program knows " +
                      std::to_string(Schema_Version) + ").");
  }
}

void Bring_Up_To_Date(TEngine& engine, const std::string& path, bool read_only) {
  TIdentity found = engine.Identify();
  Refuse_Foreign(found, path);
  engine.Prepare_Storage();
  if (found.Program == Application_Id && found.Version == Schema_Version) return;
  if (read_only) throw EOpen_Error("\"" + path + "\" needs a newer schema, but is read-only.");

  if (const auto refusal = engine.Begin_Write())
    throw EOpen_Error("\"" + path + "\" cannot be prepared: " + *refusal + ".");
  try {
    found = engine.Identify();  // another process may have been faster
    Refuse_Foreign(found, path);
    if (found.Program != Application_Id) {
      Create_Schema(engine);
    } else {
      Migrate(engine, static_cast<int>(found.Version), Migrations());
    }
    engine.Commit();
  } catch (...) {
    engine.Rollback();
    throw;
  }
}

namespace {

// As SQL writes it, whatever the user's locale.
std::string Sql_Number(double value) {
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

}  // namespace

void Migrate(TEngine& engine, int version, const std::vector<TMigration>& steps) {
  for (const TMigration& step : steps) {
    if (step.Version <= version) continue;
    engine.Execute(std::regex_replace(step.Sql, std::regex("\\$NOW"), Sql_Number(Kt_util_01::Now())));
    engine.Stamp(Application_Id, step.Version);
  }
}

}  // namespace Kt_data_01

#pragma once

// The text of components as it came, whose properties can be taken out and put in without touching the
// others.

#include <string>
#include <string_view>
#include <vector>

namespace Plexidex {

/// One component. Names are in capitals; that of a component inside it stands for all of it.
class TKept_Component {
 public:
  /// The text from its beginning to its end.
  explicit TKept_Component(std::string_view text);

  const std::string& Kind() const { return pieces.front().Name; }
  std::string Text() const;
  bool Has(std::string_view name) const;
  /// The lines of all properties of a name; "" for none.
  std::string Lines(std::string_view name) const;
  void Remove(std::string_view name);
  /// Puts lines where the first property of that name was, or else after all properties.
  void Replace(std::string_view name, std::string_view lines);
  void Add(std::string_view name, std::string_view lines);
  /// How many components begin in it, itself included.
  std::size_t Begun() const { return begun; }
  /// The names of the zones that its times are in, each once.
  std::vector<std::string> Zones() const;

 private:
  struct TPiece {
    std::string Name, Text;
  };
  std::size_t begun = 0;
  std::vector<TPiece> pieces;  // the first and the last begin and end it
};

/// The text as the format wants it: UTF-8, its line ends, no long and no empty lines.
std::string As_Kept(std::string_view text);
/// Components that stand one after the other.
std::vector<TKept_Component> Split_Components(std::string_view text);

/// A line before the components that refers to a zone.
std::string Zone_Reference(std::string_view digest);
/// Takes such lines off the beginning of a text, and gives the digests.
std::vector<std::string> Take_Zone_References(std::string_view& text);

}  // namespace Plexidex

#pragma once

// The contacts of books with what they keep, for people and for programs.

#include <map>
#include <ostream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Books.h"

namespace Plexidex {

struct TListed_Contact {
  std::string Key, Name, Book;
  std::string Kind;                                                    // the name of its template
  std::vector<std::pair<std::string, std::string>> Telephones, Mails;  // each with its label
  std::string Address;                                                 // in lines
  std::string Folder;  // with those that it lies in: "Family/Cousins"
  std::vector<std::string> Categories;
};

/// By book and name; of those that the user may see, those in whose name, number or e-mail address all words
/// of a text occur. Throws EData_Error.
std::vector<TListed_Contact> Read_Listed_Contacts(const std::vector<Kt_data_01::TBook>& books,
                                                  const std::string& words);
/// By name, those of a book whose keys are given. Throws EData_Error.
std::vector<TListed_Contact> Read_Listed_Contacts(const Kt_data_01::TBook& book,
                                                  const std::unordered_set<std::string>& keys);
/// The folders of a book by key, each with those that it lies in: "Family/Cousins". Throws EData_Error.
std::map<std::string, std::string> Folder_Paths(const std::string& book);

/// A table, without the columns in which nothing stands.
void Write_Contacts_Text(std::ostream& out, const std::vector<TListed_Contact>& contacts);
/// One array with an object per contact, in ASCII.
void Write_Contacts_Json(std::ostream& out, const std::vector<TListed_Contact>& contacts);

}  // namespace Plexidex

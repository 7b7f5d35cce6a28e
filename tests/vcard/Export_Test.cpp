#include "Vcard_Fixture.h"

namespace {

using Vcard_Export = Vcard_Fixture;
using enum TVcard_Version;

TEST_F(Vcard_Export, What_Was_Imported_Comes_Out_As_It_Came) {
  const std::string cards =
      Card(
          "N:Lee;Ann|FN;X-A=\"b:c\":Ann|TEL;CELL:1|TEL;CAR:2|PHOTO;ENCODING=BASE64;JPEG:| "
          "AAAA||NOTE;ENCODING=QUOTED-PRINTABLE:"
          "a=|b=0D=0A|X-SOMETHING:kept",
          "2.1") +
      "BEGIN:VCARD\nversion:3.0\nFN:Bo\n "
      "b\nitem1.tel;type=cell:3\nitem1.X-ABLabel:Boat\nitem2.EMAIL:x@y\nEND:VCARD\n" +
      Card("FN:Cid|ANNIVERSARY:20090808|LANG;PREF=1:fr|TEL:1|BDAY:19800229|CATEGORIES:b,a");
  Import(cards);
  const std::string before = Export();
  EXPECT_EQ(before, cards);
  const struct {
    std::string What;
    std::function<void(TContact&, TContact_Details&)> Change;
    std::vector<std::pair<std::string, std::string>> Then;
  } changes[] = {
      {"a number, of which type and label stay",
       [](TContact&, TContact_Details& of) { of.Fields[13] = "33"; },
       {{"item1.tel;type=cell:3\n", "item1.tel;TYPE=cell:33\n"}}},
      {"a number that is gone, with its label",
       [](TContact&, TContact_Details& of) { of.Fields[13] = ""; },
       {{"item1.tel;type=cell:3\nitem1.X-ABLabel:Boat\n", ""}}},
      {"the name, and what the card had not",
       [](TContact& of, TContact_Details& details) {
         of.Name = "Bea Lee";
         details.Notes = "a, b\nc";
         details.Fields[14] = "9";
       },
       {{"FN:Bo\n b\n", "FN:Bea Lee\n"}, {"x@y\n", "x@y\nTEL;TYPE=work:9\nNOTE:a\\, b\\nc\n"}}},
  };
  const std::string bob = Contacts().at(1).Key;
  const std::string uid = "UID:urn:uuid:" + bob + "\n";
  for (const auto& [what, change, then] : changes) {
    TContact contact = *Find_Contact(bob);
    const TContact_Details details = Read_Contact_Details(bob);
    TContact_Details changed = details;
    change(contact, changed);
    In_Update([&] { Write_Contact(bob, contact.Name, changed); });
    std::string expected = cards;
    for (const auto& [old, now] : then) expected.replace(expected.find(old), old.size(), now);
    const std::string end = "END:VCARD\nBEGIN:VCARD\r\nVERSION:4.0";
    expected.insert(expected.find(end), uid);
    EXPECT_EQ(Export(), expected) << what;
    // Nothing that has been changed is lost to the file, and it is known again.
    EXPECT_EQ(Told(Import(Export())), "1 updated, 2 unchanged") << what;
    In_Update([&] { Write_Contact(bob, "Bob", details); });
    EXPECT_EQ(Told(Import(cards)), "1 updated, 2 unchanged") << what;
    EXPECT_EQ(Told(Import(cards)), "3 unchanged") << what;
  }
}

TEST_F(Vcard_Export, One_Version_Is_Written_On_Demand) {
  Import(
      Card("N:L\xF6we;Ann|FN:Ann|TEL;CELL;PREF:1|ORG:A,B;C|PHOTO;ENCODING=BASE64;JPEG:| AA| "
           "BB||GEO:1.5,2|BDAY:1980-03-22|"
           "NOTE;ENCODING=QUOTED-PRINTABLE:x=0D=0Ay",
           "2.1") +
      Card(
          "FN:Bob|TEL;VALUE=uri;PREF=1:tel:+1;ext=2|PHOTO:data:image/png;base64,CC|GEO:geo:1,2|BDAY:--0322"));
  EXPECT_EQ(Export(V4_0), Card("N:Löwe;Ann|FN:Ann|TEL;TYPE=CELL;PREF=1:1|ORG:A\\,B;C|PHOTO:data:image/"
                               "jpeg;base64,AABB|GEO:geo:1.5,2|BDAY:"
                               "19800322|NOTE:x\\ny") +
                              Card("FN:Bob|TEL;VALUE=uri;PREF=1:tel:+1;ext=2|PHOTO:data:image/"
                                   "png;base64,CC|GEO:geo:1,2|BDAY:--0322"));
  EXPECT_EQ(
      Export(V3_0),
      Card("N:Löwe;Ann|FN:Ann|TEL;TYPE=CELL;TYPE=PREF:1|ORG:A\\,B;C|PHOTO;TYPE=JPEG;ENCODING=b:AABB|GEO:1.5,"
           "2|BDAY:"
           "1980-03-22|NOTE:x\\ny",
           "3.0") +
          Card("FN:Bob|TEL;TYPE=pref:+1 ext. 2|PHOTO;ENCODING=b;TYPE=PNG:CC|GEO:1;2|BDAY:--03-22", "3.0"));
  // What is not in UTF-8 cannot stay as it came, nor can a changed card of version 2.1.
  EXPECT_EQ(Export(), Export(V4_0));
  Change([](TContact&, TContact_Details& details) { details.Fields[13] = "9"; });
  EXPECT_NE(Export().find("TEL;TYPE=CELL;PREF=1:9\r\nORG"), std::string::npos);
}

TEST_F(Vcard_Export, Own_Contacts_Come_Back_To_Their_Fields) {
  const std::string book = List_Books().front().Key;
  TTemplate own{{},
                book,
                "Sailor",
                {"Ship", "", "Job title", "", "", "Home", "Home", "Harbour", "", "", "Post"},
                TAddress_Style::UK};
  own.Labels.back() = "Address";
  In_Update([&] {
    Write_Template(own);
    for (const TTemplate& of : List_Templates(book)) {
      TContact_Details details;
      details.Template = of.Key;
      for (const TTemplate_Field& field : Template_Fields)
        details.Fields[field.Code] = "f,\\n;" + std::to_string(field.Code);
      details.Fields[Field_Address] = "Line 1\nLine; 2\n\nTown, Land";
      for (std::size_t i = 0; i < Other_Fields; ++i) details.Other[i] = "o,\n" + std::to_string(i);
      details.Notes = "a\nb";
      const std::string contact = Create_Contact(book, of.Name + " \"X\"");
      Write_Contact_Details(contact, details);
      Set_Categories(contact, {Find_Or_Add_Category(book, "Club, old"), Find_Or_Add_Category(book, "New")});
    }
  });
  for (const auto version : {V3_0, V4_0}) {
    const std::string out = Export(version);
    std::vector<std::string> held;
    for (std::size_t i = 0; i < 3; ++i) held.push_back(Held(i));
    EXPECT_EQ(Told(Import(out)), "3 unchanged");
    // In another book, which knows the template.
    In_Update([] { Create_Book("Other"); });
    const std::string other = Find_Book("Other")->Key;
    In_Update([&] {
      own.Key.clear();
      own.Book = other;
      Write_Template(own);
    });
    options.Book = "Other";
    EXPECT_EQ(Told(Import(out)), "3 added");
    Export_Vcards(folder.File("again.vcf"), "Other", {}, nullptr);
    EXPECT_EQ(File_Content(folder.File("again.vcf")), out);
    In_Update([&] { Delete_Book(book == List_Books().front().Key ? other : book); });
    EXPECT_EQ(Check_Store(), std::vector<std::string>());
    options.Book.clear();
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(Held(i), held[i]);
  }
}

}  // namespace

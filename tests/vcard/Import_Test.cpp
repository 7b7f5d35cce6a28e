#include "Vcard_Fixture.h"

namespace {

using Vcard_Import = Vcard_Fixture;

TEST_F(Vcard_Import, Properties_Go_To_The_Fields_That_They_Are_Meant_For) {
  const struct {
    std::string What, Version, Lines, Held;
  } cases[] = {
      {"2.1: bare types, quoted-printable over soft line breaks, its charset", "2.1",
       "N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=F6rg;;Dr.;|TEL;CELL;PREF:1|TEL;HOME:2|"
       "TEL;WORK;FAX:3|NOTE;ENCODING=QUOTED-PRINTABLE:one=0D=0Atwo =|  and=|=20three|ORG:Works;Office\\;1|"
       "URL;WORK:c:\\new",
       "Dr. Jörg Müller [Person]|Title: Dr.|Company: Works, Office;1|Home: 2|Mobile: 1|Fax: 3|Web page: "
       "c:\\new|"
       "Notes: one/two   and three"},
      {"2.1: binary values with or without an indent, cards in cards", "2.1",
       "FN:Ann|PHOTO;ENCODING=BASE64;JPEG:AAAA|BBBB==||KEY;ENCODING=BASE64:| CCCC||AGENT:|BEGIN:VCARD|FN:Bob|"
       "END:VCARD|EMAIL:a@b",
       "Ann [Person]|E-mail: a@b"},
      {"3.0: folded lines, escapes, groups with labels, lists", "3.0",
       "FN:Ann\\, "
       "Lee|N:Lee;Ann;;;|item1.TEL:1|item1.X-ABLabel:_$!<Work>!$_|TEL;type=WORK;type=pref:2|TEL;TYPE=\"home,"
       "voice\":3|EMAIL;TYPE=WORK:w@x|EMAIL:h@x|NOTE:a long n| ote\\nof two|CATEGORIES:Club,Old\\, good|"
       "ADR;TYPE=WORK:;;Office;;;;|ADR;TYPE=home:1;Flat 2;Lane;Town;;123;Land|TITLE:Cook|ROLE:Chef",
       "Ann, Lee [Person]|Job title: Cook|Home: 3|Mobile: 2|Work: 1|E-mail: h@x|E-mail at work: w@x|"
       "Address: 1/Flat 2/Lane/123 Town/Land|Notes: a long note/of two|Categories: Club, Old, good"},
      {"4.0: addresses of telephones, preference, several notes", "4.0",
       "FN:Ann|TEL;VALUE=uri;TYPE=\"voice,work\":tel:+1-2;ext=3|EMAIL:b@x|EMAIL;PREF=1:a@x|EMAIL:c@x|NOTE:"
       "one|NOTE:two|"
       "ROLE:Chef",
       "Ann [Person]|Job title: Chef|Work: +1-2 ext. 3|E-mail: a@x|E-mail at work: b@x|Notes: one//two"},
      {"more numbers than fields, and no voice in the fax", "4.0",
       "FN:Ann|TEL;TYPE=work:1|TEL;TYPE=work:2|TEL:3|TEL:4|TEL;TYPE=fax:5|TEL;TYPE=fax:6",
       "Ann [Person]|Home: 2|Mobile: 3|Work: 1|Fax: 5"},
      {"a company by its kind", "4.0", "KIND:org|FN:Works|TEL;TYPE=work:1", "Works [Company]|Telephone: 1"},
      {"a company by its name", "3.0", "FN:Works|N:;;;;|ORG:Works|TEL;TYPE=fax:1", "Works [Company]|Fax: 1"},
      {"without a name of its own", "2.1", "EMAIL;PREF:a@b", "a@b [Person]|E-mail: a@b"},
      {"Windows-1252", "3.0", "FN:J\xF6rg \x80", "Jörg € [Person]"},
  };
  for (const auto& [what, version, lines, held] : cases) {
    for (const char* mark : {"", "\xEF\xBB\xBF"}) {
      Run_Sql(
          "DELETE FROM KT_Cards; DELETE FROM KT_Categories_InUse; DELETE FROM KT_Contacts_Data; DELETE FROM "
          "KT_Contacts WHERE Type = 0");
      database.Reopen();
      const std::string ended = Card(lines, version);
      EXPECT_EQ(Told(Import(mark + (*mark ? std::regex_replace(ended, std::regex("\r"), "") : ended))),
                "1 added")
          << what;
      EXPECT_EQ(Held(), held) << what;
    }
  }
}

TEST_F(Vcard_Import, What_Cannot_Be_Used_Is_Named_And_The_Rest_Comes_In) {
  EXPECT_EQ(Told(Import(Card("FN:Ann") + "stray\r\nmore\r\n" + Card("NOTE:x") + Card("FN:Bob", "9.0") +
                        "BEGIN:VCARD\r\nFN:Lost\r\n" + Card("FN:Cid\r\nno property") +
                        "END:VCARD\r\nBEGIN:VCARD\r\nFN:End")),
            "2 added; not used: line 5: belongs to no card; not used: the card of line 15: has no end before "
            "line 17, where "
            "another one begins; not used: line 22: ends a card that never began; not used: the card of line "
            "23: has no end; "
            "not used: the card of line 7: has nothing that could be its name; not used: the card of line "
            "11: line 12 names a "
            "version that is none of 2.1, 3.0 and 4.0; note: Cid: line 20 is no property; it is kept, but "
            "not used");
  EXPECT_EQ(Held(1), "Cid [Person]");
  EXPECT_EQ(Check_Store(), std::vector<std::string>());
  EXPECT_EQ(Refusal(""), "is empty.");
  EXPECT_EQ(Refusal("\r\nBEGIN:VCALENDAR\r\n"), "is no vCard file: line 2 does not begin a card.");
  EXPECT_EQ(Refusal(Card("FN:Zero") + std::string(1, '\0')), "is no vCard file: line 5 holds binary data.");
  options.Most_Entries = 1;
  EXPECT_EQ(Refusal(Card("FN:One") + Card("FN:Two")),
            "holds more than 1 contacts; a higher limit of entries allows more.");
  Plant("INSERT ON KT_Cards");
  options.Most_Entries = 2;
  EXPECT_NE(Refusal(Card("FN:One") + Card("FN:Two")).find("planted fault"), std::string::npos);
  EXPECT_EQ(Contacts().size(), 2U) << "nothing is half written";
}

TEST_F(Vcard_Import, A_Text_Too_Long_For_A_Field_Is_Kept_In_The_Card) {
  const std::string card = Card("FN:Ann\r\nNOTE:" + std::string((1U << 20) + 1, 'x'));
  EXPECT_EQ(Told(Import(card)), "1 added; note: Ann: its NOTE is too long for a field, and is only kept");
  EXPECT_EQ(Held(), "Ann [Person]");
  EXPECT_EQ(Export(), card);
}

TEST_F(Vcard_Import, A_Second_Import_Changes_Nothing_And_A_Changed_Card_What_It_Changed) {
  const auto card = [](const std::string& lines) { return Card("UID:urn:uuid:1|" + lines); };
  const std::string first =
      card("FN:Ann|TEL;TYPE=home:1|TEL;TYPE=work:2|NOTE:n|CATEGORIES:Club|REV:20240101T000000Z") +
      Card("FN:Bob");
  EXPECT_EQ(Told(Import(first)), "2 added");
  EXPECT_EQ(Query_Rows("Type, Title, Description", "KT_Log WHERE Type = 3 ORDER BY Title"),
            "3|Ann|in.vcf, 3|Bob|in.vcf");
  Change([](TContact&, TContact_Details& details) {
    details.Fields[12] = "10";
    details.Fields[14] = "20";
    details.Notes = "mine";
  });
  database.Reopen_Read_Only();
  EXPECT_EQ(Told(Import(std::regex_replace(first, std::regex("20240101"), "20250101"))), "2 unchanged");
  database.Reopen();
  EXPECT_EQ(Told(Import(card("FN:Ann B|TEL;TYPE=home:1|TEL;TYPE=work:3|NOTE:n|CATEGORIES:club,New"))),
            "1 updated");
  EXPECT_EQ(Held(), "Ann B [Person]|Home: 10|Work: 3|Notes: mine|Categories: Club, New");
  EXPECT_EQ(Told(Import(card("FN:Old") + card("FN:Ann B|TEL;TYPE=home:1|NOTE:n"))),
            "1 updated; note: the card of line 1: stands in the file once more, with the same UID; the last "
            "one counts");
  EXPECT_EQ(Held(), "Ann B [Person]|Home: 10|Notes: mine");
  In_Update([] { Set_Contact_Deleted(Contacts().at(0).Key, true); });
  for (const char* name : {"Ann B|TEL;TYPE=home:1|NOTE:n", "Ann C"})
    EXPECT_EQ(Told(Import(card(std::string("FN:") + name))),
              "1 unchanged; note: Ann B: was deleted here, and stays so until it is restored");
  EXPECT_EQ(Held(), "Bob [Person]");
}

TEST_F(Vcard_Import, A_Birthday_Is_A_Yearly_Event_Of_The_Contact) {
  const auto import = [&](const std::string& birthday, const std::string& name = "Ann") {
    EXPECT_EQ(Import(Card("UID:1|FN:" + name + "|" + birthday)).Unused.size(), 0U);
    return Query_Rows(
        "Title, AllDay, Freq, count(*), min(EventDate), CAST(Notes AS TEXT)",
        "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key JOIN KT_Contacts c ON c.Key = d.Contact "
        "GROUP BY e.Key");
  };
  // From this year on for ten years.
  EXPECT_EQ(import("BDAY:19800116"), "Birthday of Ann|1|4|10|45307.0|Born on 1/16/1980");
  EXPECT_EQ(import("BDAY:1980-01-16T10:00:00", "Ann"), "Birthday of Ann|1|4|10|45307.0|Born on 1/16/1980");
  EXPECT_EQ(import("BDAY:1980-01-16", "Eve"), "Birthday of Eve|1|4|10|45307.0|Born on 1/16/1980");
  EXPECT_EQ(import("BDAY:--0110", "Eve"), "Birthday of Eve|1|4|11|45301.0|");
  EXPECT_EQ(Query_Number("SELECT sum(Actioned) FROM KT_Events_Data"), 1) << "what is past is not overdue";
  Run_Sql("UPDATE KT_Events SET Private = 1, User = 'ann', Title = 'Hers'");
  database.Reopen();
  EXPECT_EQ(import("BDAY:--0111", "Eve"), "Hers|1|4|11|45301.0|") << "private to another";
  Run_Sql("UPDATE KT_Events SET Private = 0");
  database.Reopen();
  EXPECT_EQ(import("BDAY:--0110", "Eve"), "Birthday of Eve|1|4|11|45301.0|");
  EXPECT_EQ(Query_Text("SELECT User FROM KT_Events"), "ann");
  Run_Sql("UPDATE KT_Events SET Private = 1, User = '" + User_Key() + "'");
  database.Reopen();
  EXPECT_EQ(import("BDAY:--0111", "Eve"), "Birthday of Eve|1|4|11|45302.0|");
  EXPECT_EQ(Query_Number("SELECT Private FROM KT_Events"), 1) << "one's own stays private";
  EXPECT_EQ(import("BDAY;VALUE=text:in spring", "Eve"), "");
  EXPECT_EQ(import("BDAY:20000229", "Eve").substr(0, 28), "Birthday of Eve|1|4|10|45351");
  EXPECT_EQ(Query_Text("SELECT group_concat(EventDate, ' ') FROM KT_Events_Data WHERE EventDate < 47000 "),
            "45351.0 45716.0 46081.0 46446.0 46812.0");
  EXPECT_EQ(Check_Store(), std::vector<std::string>());
}

}  // namespace

#include "Holiday_Rules.h"

namespace Plexidex {

using enum TWeekday;
using enum TWeekend;

namespace {

constexpr TDay_Rule Islamic(int month, int day) {
  return In_Calendar(TDay_Kind::Islamic, month, day);
}
constexpr TDay_Rule Hebrew(int month, int day) {
  return In_Calendar(TDay_Kind::Hebrew, month, day);
}
constexpr TDay_Rule Chinese(int month, int day) {
  return In_Calendar(TDay_Kind::Chinese, month, day);
}
constexpr TDay_Rule Korean(int month, int day) {
  return In_Calendar(TDay_Kind::Korean, month, day);
}

constexpr THoliday_Rule Australia[] = {
    {"New Year's Day", On(1, 1)},
    {"Australia Day", On(1, 26), Until(1993)},
    {"Australia Day", On(1, 26), Since(1994), Monday_Too},
    {"Good Friday", Easter(-2)},
    {"Easter Monday", Easter(1)},
    {"Anzac Day", On(4, 25)},
    {"National Day of Mourning for Queen Elizabeth II", On(9, 22), In(2022)},
    {"Christmas Day", On(12, 25)},
    {"Boxing Day", On(12, 26)},
};

// With the days on which work is optional.
constexpr THoliday_Rule Brazil[] = {
    {"New Year's Day", On(1, 1)},
    {"Carnival", Easter(-48).Lasting(2)},
    {"Ash Wednesday", Easter(-46)},
    {"Good Friday", Easter(-2)},
    {"Tiradentes Day", On(4, 21)},
    {"Labour Day", On(5, 1)},
    {"Corpus Christi", Easter(60)},
    {"Independence Day", On(9, 7)},
    {"Our Lady of Aparecida", On(10, 12), Since(1980)},
    {"Public Servants' Day", On(10, 28)},
    {"All Souls' Day", On(11, 2)},
    {"Republic Day", On(11, 15)},
    {"Black Awareness Day", On(11, 20), Since(2024)},
    {"Christmas Eve", On(12, 24)},
    {"Christmas Day", On(12, 25)},
    {"New Year's Eve", On(12, 31)},
};

constexpr THoliday_Rule Canada[] = {
    {"New Year's Day", On(1, 1)},
    {"Good Friday", Easter(-2)},
    {"Victoria Day", On(5, 24), Until(1952), Stays},
    {"Victoria Day", On_Or_After(Monday, 5, 18), Since(1953)},
    {"Dominion Day", On(7, 1), Until(1982)},
    {"Canada Day", On(7, 1), Since(1983)},
    {"Labour Day", Nth(1, Monday, 9)},
    {"National Day for Truth and Reconciliation", On(9, 30), Since(2021)},
    {"Thanksgiving", Nth(2, Monday, 10)},
    {"Remembrance Day", On(11, 11)},
    {"Christmas Day", On(12, 25), {}, Free_Too},
    {"Boxing Day", On(12, 26), {}, Free_Too},
};
constexpr TWeekend_Rule Canadian_Weekends[] = {{{}, Monday_Too}};

constexpr THoliday_Rule China[] = {
    {"New Year's Day", On(1, 1)},
    {"Spring Festival", Chinese(1, 1).Lasting(3), Until(2007)},
    {"Spring Festival", Chinese(1, 1).Plus(-1).Lasting(3), {2008, 2013}},
    {"Spring Festival", Chinese(1, 1).Lasting(3), {2014, 2024}},
    {"Spring Festival", Chinese(1, 1).Plus(-1).Lasting(4), Since(2025)},
    {"Tomb-Sweeping Day", Solar_Term(4, 49661), Since(2008)},
    {"Labour Day", On(5, 1), Until(1999)},
    {"Labour Day", On(5, 1).Lasting(3), {2000, 2007}},
    {"Labour Day", On(5, 1), {2008, 2024}},
    {"Labour Day", On(5, 1).Lasting(2), Since(2025)},
    {"Dragon Boat Festival", Chinese(5, 5), Since(2008)},
    {"Mid-Autumn Festival", Chinese(8, 15), Since(2008)},
    {"National Day", On(10, 1).Lasting(2), Until(1998)},
    {"National Day", On(10, 1).Lasting(3), Since(1999)},
};

constexpr THoliday_Rule Israel[] = {
    {"Passover", Hebrew(8, 15)},
    {"Seventh Day of Passover", Hebrew(8, 21)},
    {"Independence Day", Hebrew(9, 5), Until(2003), Away_From_Sabbath},
    {"Independence Day", Hebrew(9, 5), Since(2004), Away_From_Sabbath_And_Its_Eve},
    {"Shavuot", Hebrew(10, 6)},
    {"Rosh Hashanah", Hebrew(1, 1).Lasting(2)},
    {"Yom Kippur", Hebrew(1, 10)},
    {"Sukkot", Hebrew(1, 15)},
    {"Simchat Torah", Hebrew(1, 22)},
};

// With the days on which banks are closed.
constexpr THoliday_Rule Japan[] = {
    {"New Year's Day", On(1, 1)},
    {"Bank Holiday", On(1, 2).Lasting(2), {}, Apart},
    {"Coming of Age Day", On(1, 15), Until(1999)},
    {"Coming of Age Day", Nth(2, Monday, 1), Since(2000)},
    {"National Foundation Day", On(2, 11), {1967, 1973}, Stays},
    {"National Foundation Day", On(2, 11), Since(1974)},
    {"Emperor's Birthday", On(2, 23), Since(2020)},
    {"Vernal Equinox Day", Solar_Term(3, 208357), Until(1979)},
    {"Vernal Equinox Day", Solar_Term(3, 208431), Since(1980)},
    {"Wedding of the Crown Prince", On(4, 10), In(1959)},
    {"Emperor's Birthday", On(4, 29), Until(1988)},
    {"Greenery Day", On(4, 29), {1989, 2006}},
    {"Showa Day", On(4, 29), Since(2007)},
    {"Emperor's Accession Day", On(5, 1), In(2019)},
    {"Constitution Day", On(5, 3)},
    {"Greenery Day", On(5, 4), Since(2007)},
    {"Children's Day", On(5, 5)},
    {"Wedding of the Crown Prince", On(6, 9), In(1993)},
    {"Marine Day", On(7, 20), {1996, 2002}},
    {"Marine Day", Nth(3, Monday, 7), {2003, 2019}},
    {"Marine Day", On(7, 23), In(2020)},
    {"Marine Day", On(7, 22), In(2021)},
    {"Marine Day", Nth(3, Monday, 7), Since(2022)},
    {"Mountain Day", On(8, 11), {2016, 2019}},
    {"Mountain Day", On(8, 10), In(2020)},
    {"Mountain Day", On(8, 8), In(2021)},
    {"Mountain Day", On(8, 11), Since(2022)},
    {"Respect for the Aged Day", On(9, 15), {1966, 2002}},
    {"Respect for the Aged Day", Nth(3, Monday, 9), Since(2003)},
    {"Autumnal Equinox Day", Solar_Term(9, 232588), Until(1979)},
    {"Autumnal Equinox Day", Solar_Term(9, 232488), Since(1980)},
    {"Health and Sports Day", On(10, 10), {1966, 1999}},
    {"Health and Sports Day", Nth(2, Monday, 10), {2000, 2019}},
    {"Sports Day", On(7, 24), In(2020)},
    {"Sports Day", On(7, 23), In(2021)},
    {"Sports Day", Nth(2, Monday, 10), Since(2022)},
    {"Enthronement Ceremony", On(10, 22), In(2019)},
    {"Culture Day", On(11, 3)},
    {"Enthronement Ceremony", On(11, 12), In(1990)},
    {"Labour Thanksgiving Day", On(11, 23)},
    {"Emperor's Birthday", On(12, 23), {1989, 2018}},
    {"Funeral of Emperor Showa", On(2, 24), In(1989)},
    {"Bank Holiday", On(12, 31), {}, Apart},
};
constexpr TWeekend_Rule Japanese_Weekends[] = {{{1973, 2006}, Sunday_Next_Too},
                                               {Since(2007), Sunday_Free_Too}};

// Days that meet other holidays are made good on the next free day.
constexpr THoliday_Rule South_Korea[] = {
    {"New Year's Day", On(1, 1)},
    {"Seollal", Korean(1, 1), {1985, 1988}},
    {"Seollal", Korean(1, 1).Plus(-1).Lasting(3), {1989, 2013}},
    {"Seollal", Korean(1, 1).Plus(-1).Lasting(3), Since(2014), Sunday_Free_Too},
    {"Independence Movement Day", On(3, 1), Until(2021)},
    {"Independence Movement Day", On(3, 1), Since(2022), Free_Too},
    {"Children's Day", On(5, 5), {1975, 2013}},
    {"Children's Day", On(5, 5), Since(2014), Free_Too},
    {"Children's Day (observed)", On(5, 6), In(2025)},
    {"Buddha's Birthday", Korean(4, 8), {1975, 2022}},
    {"Buddha's Birthday", Korean(4, 8), Since(2023), Free_Too},
    {"Memorial Day", On(6, 6), Since(1956)},
    {"Constitution Day", On(7, 17), Until(2007)},
    {"Liberation Day", On(8, 15), Until(2020)},
    {"Liberation Day", On(8, 15), Since(2021), Free_Too},
    {"Chuseok", Korean(8, 15), Until(1985)},
    {"Chuseok", Korean(8, 15).Lasting(2), {1986, 1988}},
    {"Chuseok", Korean(8, 15).Plus(-1).Lasting(3), {1989, 2013}},
    {"Chuseok", Korean(8, 15).Plus(-1).Lasting(3), Since(2014), Sunday_Free_Too},
    {"Chuseok (observed)", On(10, 6), In(2017)},
    {"Chuseok (observed)", On(10, 5), In(2028)},
    {"National Foundation Day", On(10, 3), Until(2020)},
    {"National Foundation Day", On(10, 3), Since(2021), Free_Too},
    {"Hangul Day", On(10, 9), Until(1990)},
    {"Hangul Day", On(10, 9), {2013, 2020}},
    {"Hangul Day", On(10, 9), Since(2021), Free_Too},
    {"Christmas Day", On(12, 25), Until(2022)},
    {"Christmas Day", On(12, 25), Since(2023), Free_Too},
};

// Matariki as far as its dates are laid down by name here.
constexpr THoliday_Rule New_Zealand[] = {
    {"New Year's Day", On(1, 1), {}, Free_Too},
    {"Day after New Year's Day", On(1, 2), {}, Free_Too},
    {"Waitangi Day", On(2, 6), {1974, 2013}},
    {"Waitangi Day", On(2, 6), Since(2014), Free_Too},
    {"Good Friday", Easter(-2)},
    {"Easter Monday", Easter(1)},
    {"Anzac Day", On(4, 25), Until(2013)},
    {"Anzac Day", On(4, 25), Since(2014), Free_Too},
    {"Queen's Birthday", Nth(1, Monday, 6), {1952, 2022}},
    {"King's Birthday", Nth(1, Monday, 6), Since(2023)},
    {"Matariki", On(6, 24), In(2022)},
    {"Matariki", On(7, 14), In(2023)},
    {"Matariki", On(6, 28), In(2024)},
    {"Matariki", On(6, 20), In(2025)},
    {"Matariki", On(7, 10), In(2026)},
    {"Matariki", On(6, 25), In(2027)},
    {"Matariki", On(7, 14), In(2028)},
    {"Matariki", On(7, 6), In(2029)},
    {"Matariki", On(6, 21), In(2030)},
    {"Matariki", On(7, 11), In(2031)},
    {"Matariki", On(7, 2), In(2032)},
    {"Queen Elizabeth II Memorial Day", On(9, 26), In(2022)},
    {"Labour Day", Nth(4, Monday, 10)},
    {"Christmas Day", On(12, 25), {}, Free_Too},
    {"Boxing Day", On(12, 26), {}, Free_Too},
};

constexpr THoliday_Rule Turkey[] = {
    {"New Year's Day", On(1, 1)},
    {"National Sovereignty and Children's Day", On(4, 23)},
    {"Labour Day", On(5, 1), Since(2009)},
    {"Youth and Sports Day", On(5, 19)},
    {"Democracy and National Unity Day", On(7, 15), Since(2017)},
    {"Victory Day", On(8, 30)},
    {"Republic Day", On(10, 29)},
    {"Ramadan Feast", Islamic(10, 1).Lasting(3)},
    {"Feast of the Sacrifice", Islamic(12, 10).Lasting(4)},
};

// The federal holidays, and the days that most calendars show besides.
constexpr THoliday_Rule United_States[] = {
    {"New Year's Day", On(1, 1)},
    {"Martin Luther King Jr. Day", Nth(3, Monday, 1), Since(1986)},
    {"Groundhog Day", On(2, 2), {}, Apart},
    {"Valentine's Day", On(2, 14), {}, Apart},
    {"Washington's Birthday", On(2, 22), Until(1970)},
    {"Washington's Birthday", Nth(3, Monday, 2), Since(1971)},
    {"St Patrick's Day", On(3, 17), {}, Apart},
    {"Good Friday", Easter(-2), {}, Apart},
    {"Easter Sunday", Easter(0), {}, Apart},
    {"Mother's Day", Nth(2, Sunday, 5), {}, Apart},
    {"Memorial Day", On(5, 30), Until(1970)},
    {"Memorial Day", Last(Monday, 5), Since(1971)},
    {"Father's Day", Nth(3, Sunday, 6), Since(1972), Apart},
    {"Juneteenth", On(6, 19), Since(2021)},
    {"Independence Day", On(7, 4)},
    {"Labor Day", Nth(1, Monday, 9)},
    {"Columbus Day", On(10, 12), Until(1970), Stays},
    {"Columbus Day", Nth(2, Monday, 10), Since(1971)},
    {"Halloween", On(10, 31), {}, Apart},
    {"Election Day", On_Or_After(Tuesday, 11, 2).Each(4), {}, Apart},
    {"Armistice Day", On(11, 11), Until(1953)},
    {"Veterans Day", On(11, 11), {1954, 1970}},
    {"Veterans Day", Nth(4, Monday, 10), {1971, 1977}},
    {"Veterans Day", On(11, 11), Since(1978)},
    {"Thanksgiving", Nth(4, Thursday, 11)},
    {"Christmas Eve", On(12, 24), {}, Apart},
    {"Christmas Day", On(12, 25)},
    {"New Year's Eve", On(12, 31), {}, Apart},
    {"National Day of Mourning for Ronald Reagan", On(6, 11), In(2004)},
    {"National Day of Mourning for Gerald Ford", On(1, 2), In(2007)},
    {"National Day of Mourning for George H. W. Bush", On(12, 5), In(2018)},
    {"National Day of Mourning for Jimmy Carter", On(1, 9), In(2025)},
};
constexpr TWeekend_Rule American_Weekends[] = {{{1953, 1970}, Sunday_Next_Too}, {Since(1971), Nearest_Too}};

constexpr TCountry_Rules Countries[] = {
    {"AU", "Australia", Australia},
    {"BR", "Brazil", Brazil},
    {"CA", "Canada", Canada, 1950, Canadian_Weekends},
    {"CN", "China", China},
    {"IL", "Israel", Israel},
    {"JP", "Japan", Japan, 1950, Japanese_Weekends, "Substitute Holiday", 1986},
    {"KR", "South Korea", South_Korea},
    {"NZ", "New Zealand", New_Zealand},
    {"TR", "Turkey", Turkey},
    {"US", "United States", United_States, 1950, American_Weekends},
};

}  // namespace

std::span<const TCountry_Rules> Countries_Overseas() {
  return Countries;
}

}  // namespace Plexidex

#include "Holiday_Rules.h"

namespace Plexidex {

using enum TWeekday;
using enum TWeekend;

namespace {

constexpr THoliday_Rule Austria[] = {
    {"New Year's Day", On(1, 1)},     {"Epiphany", On(1, 6)},
    {"Good Friday", Easter(-2)},      {"Easter Monday", Easter(1)},
    {"Labour Day", On(5, 1)},         {"Ascension Day", Easter(39)},
    {"Whit Monday", Easter(50)},      {"Corpus Christi", Easter(60)},
    {"Assumption Day", On(8, 15)},    {"National Day", On(10, 26), Since(1967)},
    {"All Saints' Day", On(11, 1)},   {"Immaculate Conception", On(12, 8), Since(1955)},
    {"Christmas Eve", On(12, 24)},    {"Christmas Day", On(12, 25)},
    {"St Stephen's Day", On(12, 26)}, {"New Year's Eve", On(12, 31)},
};

constexpr THoliday_Rule Belgium[] = {
    {"New Year's Day", On(1, 1)},  {"Easter Monday", Easter(1)},   {"Labour Day", On(5, 1)},
    {"Ascension Day", Easter(39)}, {"Whit Monday", Easter(50)},    {"National Day", On(7, 21)},
    {"Assumption Day", On(8, 15)}, {"All Saints' Day", On(11, 1)}, {"Armistice Day", On(11, 11)},
    {"Christmas Day", On(12, 25)},
};

// Those of all cantons.
constexpr THoliday_Rule Switzerland[] = {
    {"New Year's Day", On(1, 1)},
    {"Ascension Day", Easter(39)},
    {"National Day", On(8, 1), Since(1994)},
    {"Christmas Day", On(12, 25)},
};

// Before 1990 those of the Federal Republic.
constexpr THoliday_Rule Germany[] = {
    {"New Year's Day", On(1, 1)},
    {"Good Friday", Easter(-2)},
    {"Easter Monday", Easter(1)},
    {"Labour Day", On(5, 1)},
    {"Ascension Day", Easter(39)},
    {"Whit Monday", Easter(50)},
    {"German Unity Day", On(6, 17), {1954, 1990}},
    {"German Unity Day", On(10, 3), Since(1990)},
    {"Reformation Day", On(10, 31), In(2017)},
    {"Day of Repentance and Prayer", On_Or_After(Wednesday, 11, 16), {1990, 1994}},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Denmark[] = {
    {"New Year's Day", On(1, 1)},
    {"Maundy Thursday", Easter(-3)},
    {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"Great Prayer Day", Easter(26), Until(2023)},
    {"Ascension Day", Easter(39)},
    {"Whit Sunday", Easter(49)},
    {"Whit Monday", Easter(50)},
    {"Constitution Day", On(6, 5)},
    {"Christmas Eve", On(12, 24)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Estonia[] = {
    {"New Year's Day", On(1, 1)},
    {"Independence Day", On(2, 24)},
    {"Good Friday", Easter(-2), Since(1994)},
    {"Easter Sunday", Easter(0), Since(1994)},
    {"International Workers' Solidarity Day", On(5, 1), Until(1993)},
    {"May Day", On(5, 1), Since(1994)},
    {"Whit Sunday", Easter(49), Since(1994)},
    {"Victory Day", On(6, 23)},
    {"Midsummer Day", On(6, 24)},
    {"Independence Restoration Day", On(8, 20), Since(1998)},
    {"Day of Declaration of Sovereignty", On(11, 16), Until(1993)},
    {"Christmas Eve", On(12, 24), Since(2005)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Spain[] = {
    {"New Year's Day", On(1, 1)},   {"Epiphany", On(1, 6)},          {"Good Friday", Easter(-2)},
    {"Labour Day", On(5, 1)},       {"Assumption Day", On(8, 15)},   {"National Day", On(10, 12)},
    {"All Saints' Day", On(11, 1)}, {"Constitution Day", On(12, 6)}, {"Immaculate Conception", On(12, 8)},
    {"Christmas Day", On(12, 25)},
};

// Epiphany, Ascension Day and the autumn days lay on Saturdays for some years.
constexpr THoliday_Rule Finland[] = {
    {"New Year's Day", On(1, 1)},
    {"Epiphany", On(1, 6), Until(1972)},
    {"Epiphany", On_Or_After(Saturday, 1, 6), {1973, 1990}},
    {"Epiphany", On(1, 6), Since(1991)},
    {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"May Day", On(5, 1)},
    {"Ascension Day", Easter(39), Until(1972)},
    {"Ascension Day", Easter(34), {1973, 1990}},
    {"Ascension Day", Easter(39), Since(1991)},
    {"Whit Sunday", Easter(49)},
    {"Midsummer Day", On(6, 24), Until(1954)},
    {"Midsummer Day", On_Or_After(Saturday, 6, 20), Since(1955)},
    {"All Saints' Day", On_Or_After(Saturday, 10, 31), Since(1955)},
    {"Independence Day", On(12, 6)},
    {"Christmas Day", On(12, 25)},
    {"St Stephen's Day", On(12, 26)},
};

constexpr THoliday_Rule France[] = {
    {"New Year's Day", On(1, 1)},
    {"Easter Monday", Easter(1)},
    {"Labour Day", On(5, 1)},
    {"Victory Day", On(5, 8), {1953, 1959}},
    {"Victory Day", On(5, 8), Since(1982)},
    {"Ascension Day", Easter(39)},
    {"Whit Monday", Easter(50)},
    {"Bastille Day", On(7, 14)},
    {"Assumption Day", On(8, 15)},
    {"All Saints' Day", On(11, 1)},
    {"Armistice Day", On(11, 11)},
    {"Christmas Day", On(12, 25)},
};

// Those of all its parts: England, Wales, Scotland and Northern Ireland.
constexpr THoliday_Rule United_Kingdom[] = {
    {"New Year's Day", On(1, 1), Since(1974), Free_Too},
    {"Good Friday", Easter(-2)},
    {"Early May Bank Holiday", Nth(1, Monday, 5), {1978, 1994}},
    {"Early May Bank Holiday", On(5, 8), In(1995)},
    {"Early May Bank Holiday", Nth(1, Monday, 5), {1996, 2019}},
    {"Early May Bank Holiday", On(5, 8), In(2020)},
    {"Early May Bank Holiday", Nth(1, Monday, 5), Since(2021)},
    {"Spring Bank Holiday", Last(Monday, 5), {1971, 2001}},
    {"Spring Bank Holiday", On(6, 4), In(2002)},
    {"Spring Bank Holiday", Last(Monday, 5), {2003, 2011}},
    {"Spring Bank Holiday", On(6, 4), In(2012)},
    {"Spring Bank Holiday", Last(Monday, 5), {2013, 2021}},
    {"Spring Bank Holiday", On(6, 2), In(2022)},
    {"Spring Bank Holiday", Last(Monday, 5), Since(2023)},
    {"Christmas Day", On(12, 25), {}, Free_Too},
    {"Boxing Day", On(12, 26), {}, Free_Too},
    {"Silver Jubilee of Queen Elizabeth II", On(6, 7), In(1977)},
    {"Wedding of Prince Charles and Lady Diana", On(7, 29), In(1981)},
    {"Millennium Celebrations", On(12, 31), In(1999)},
    {"Golden Jubilee of Queen Elizabeth II", On(6, 3), In(2002)},
    {"Wedding of Prince William and Catherine Middleton", On(4, 29), In(2011)},
    {"Diamond Jubilee of Queen Elizabeth II", On(6, 5), In(2012)},
    {"Platinum Jubilee of Queen Elizabeth II", On(6, 3), In(2022)},
    {"State Funeral of Queen Elizabeth II", On(9, 19), In(2022)},
    {"Coronation of King Charles III", On(5, 8), In(2023)},
};

constexpr THoliday_Rule Greece[] = {
    {"New Year's Day", On(1, 1)},
    {"Epiphany", On(1, 6)},
    {"Clean Monday", Orthodox_Easter(-48)},
    {"Independence Day", On(3, 25)},
    {"Good Friday", Orthodox_Easter(-2)},
    {"Easter Sunday", Orthodox_Easter(0)},
    {"Easter Monday", Orthodox_Easter(1)},
    {"Labour Day", On(5, 1)},
    {"Whit Monday", Orthodox_Easter(50)},
    {"Assumption Day", On(8, 15)},
    {"Ochi Day", On(10, 28)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Ireland[] = {
    {"New Year's Day", On(1, 1), Since(1974)},
    {"St Brigid's Day", On_Or_After(Monday, 2, 1), Since(2023)},
    {"Day of Remembrance and Recognition", On(3, 18), In(2022)},
    {"St Patrick's Day", On(3, 17)},
    {"Easter Monday", Easter(1)},
    {"May Day", Nth(1, Monday, 5), Since(1994)},
    {"Whit Monday", Easter(50), Until(1973)},
    {"June Holiday", Nth(1, Monday, 6), Since(1974)},
    {"August Holiday", Nth(1, Monday, 8)},
    {"October Holiday", Last(Monday, 10), Since(1977)},
    {"Christmas Day", On(12, 25)},
    {"St Stephen's Day", On(12, 26)},
};

constexpr THoliday_Rule Italy[] = {
    {"New Year's Day", On(1, 1)},
    {"Epiphany", On(1, 6), Until(1977)},
    {"Epiphany", On(1, 6), Since(1986)},
    {"St Joseph's Day", On(3, 19), Until(1976)},
    {"Anniversary of the Unification of Italy", On(3, 17), In(1961)},
    {"Anniversary of the Unification of Italy", On(3, 17), In(2011)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"Liberation Day", On(4, 25)},
    {"Labour Day", On(5, 1)},
    {"Ascension Day", Easter(39), Until(1976)},
    {"Corpus Christi", Easter(60), Until(1976)},
    {"Republic Day", On(6, 2), Until(1976)},
    {"Republic Day", Nth(1, Sunday, 6), {1977, 2000}},
    {"Republic Day", On(6, 2), Since(2001)},
    {"Saints Peter and Paul", On(6, 29), Until(1976)},
    {"Assumption Day", On(8, 15)},
    {"St Francis of Assisi", On(10, 4), Since(2026)},
    {"All Saints' Day", On(11, 1)},
    {"National Unity Day", On(11, 4), Until(1976)},
    {"National Unity Day", Nth(1, Sunday, 11), Since(1977)},
    {"Immaculate Conception", On(12, 8)},
    {"Christmas Day", On(12, 25)},
    {"St Stephen's Day", On(12, 26)},
};

constexpr THoliday_Rule Netherlands[] = {
    {"New Year's Day", On(1, 1)},
    {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"Queen's Day", On(4, 30), Until(1979), Sunday_To_Monday},
    {"Queen's Day", On(4, 30), {1980, 2013}, Sunday_To_Saturday},
    {"King's Day", On(4, 27), Since(2014), Sunday_To_Saturday},
    {"Liberation Day", On(5, 5).Each(5), Until(1989)},
    {"Liberation Day", On(5, 5), Since(1990)},
    {"Ascension Day", Easter(39)},
    {"Whit Sunday", Easter(49)},
    {"Whit Monday", Easter(50)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Norway[] = {
    {"New Year's Day", On(1, 1)},    {"Maundy Thursday", Easter(-3)}, {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},    {"Easter Monday", Easter(1)},    {"Labour Day", On(5, 1)},
    {"Constitution Day", On(5, 17)}, {"Ascension Day", Easter(39)},   {"Whit Sunday", Easter(49)},
    {"Whit Monday", Easter(50)},     {"Christmas Day", On(12, 25)},   {"Second Day of Christmas", On(12, 26)},
};

constexpr THoliday_Rule Poland[] = {
    {"New Year's Day", On(1, 1)},
    {"Epiphany", On(1, 6), Since(2011)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"Labour Day", On(5, 1)},
    {"Constitution Day", On(5, 3)},
    {"Whit Sunday", Easter(49)},
    {"Corpus Christi", Easter(60)},
    {"Assumption Day", On(8, 15)},
    {"All Saints' Day", On(11, 1)},
    {"Independence Day", On(11, 11)},
    {"Independence Centenary", On(11, 12), In(2018)},
    {"Christmas Eve", On(12, 24), Since(2025)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
};

// Four days were suspended from 2013 to 2015.
constexpr THoliday_Rule Portugal[] = {
    {"New Year's Day", On(1, 1)},
    {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},
    {"Freedom Day", On(4, 25)},
    {"Labour Day", On(5, 1)},
    {"Corpus Christi", Easter(60), Until(2012)},
    {"Corpus Christi", Easter(60), Since(2016)},
    {"Portugal Day", On(6, 10)},
    {"Assumption Day", On(8, 15)},
    {"Republic Day", On(10, 5), Until(2012)},
    {"Republic Day", On(10, 5), Since(2016)},
    {"All Saints' Day", On(11, 1), Until(2012)},
    {"All Saints' Day", On(11, 1), Since(2016)},
    {"Restoration of Independence", On(12, 1), Until(2012)},
    {"Restoration of Independence", On(12, 1), Since(2016)},
    {"Immaculate Conception", On(12, 8)},
    {"Christmas Day", On(12, 25)},
};

constexpr THoliday_Rule Sweden[] = {
    {"New Year's Day", On(1, 1)},
    {"Epiphany", On(1, 6)},
    {"Good Friday", Easter(-2)},
    {"Easter Sunday", Easter(0)},
    {"Easter Monday", Easter(1)},
    {"May Day", On(5, 1)},
    {"Ascension Day", Easter(39)},
    {"Whit Sunday", Easter(49)},
    {"Whit Monday", Easter(50), Until(2004)},
    {"National Day", On(6, 6), Since(2005)},
    {"Midsummer Eve", On_Or_After(Saturday, 6, 20).Plus(-1), Since(1953)},
    {"Midsummer Day", On_Or_After(Saturday, 6, 20), Since(1953)},
    {"All Saints' Day", On_Or_After(Saturday, 10, 31), Since(1953)},
    {"Christmas Eve", On(12, 24)},
    {"Christmas Day", On(12, 25)},
    {"Second Day of Christmas", On(12, 26)},
    {"New Year's Eve", On(12, 31)},
};

constexpr TCountry_Rules Countries[] = {
    {"AT", "Austria", Austria},
    {"BE", "Belgium", Belgium},
    {"CH", "Switzerland", Switzerland},
    {"DE", "Germany", Germany},
    {"DK", "Denmark", Denmark},
    {"EE", "Estonia", Estonia, 1991},
    {"ES", "Spain", Spain, 1984},
    {"FI", "Finland", Finland},
    {"FR", "France", France},
    {"GB", "United Kingdom", United_Kingdom},
    {"GR", "Greece", Greece, 1975},
    {"IE", "Ireland", Ireland},
    {"IT", "Italy", Italy},
    {"NL", "Netherlands", Netherlands},
    {"NO", "Norway", Norway},
    {"PL", "Poland", Poland, 1990},
    {"PT", "Portugal", Portugal, 1978},
    {"SE", "Sweden", Sweden},
};

}  // namespace

std::span<const TCountry_Rules> Countries_Of_Europe() {
  return Countries;
}

}  // namespace Plexidex

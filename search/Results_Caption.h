#pragma once

#include <QString>
#include <cstdint>

namespace KTReminds {

/// What a page of results says above them: how much was found, in which time, or that the search was stopped.
QString Results_Caption(const QString& found, bool all, std::int64_t elapsed_msecs);
/// What it says while it searches.
QString Searching_Caption();

}  // namespace KTReminds

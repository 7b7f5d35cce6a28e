#pragma once

#include "Kt_util_01.h"

namespace Kt_util_01 {

/// A clock that knows which of the two is meant when local time has an hour twice.
class TUTC_Clock : public TClock {
 public:
  virtual TDateTime UTC() = 0;
  TDateTime Now() override { return UTC_To_Local(UTC()); }
};

/// The current moment in UTC; of a clock that knows local time alone, the first that it can be.
TDateTime UTC_Now();

/// The local time at which so many minutes from now have passed. When the clock will show that already
/// earlier, because an hour comes twice, a time after that hour.
TDateTime Local_Time_In(int minutes);

}  // namespace Kt_util_01

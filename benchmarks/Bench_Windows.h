#pragma once

namespace Bench {

/// Makes the application object that windows need, without a screen, if there is none yet. It is never freed:
/// the benchmarks end with the program.
void Need_Windows();

}  // namespace Bench

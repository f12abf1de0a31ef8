// Lines give frequencies in MHz; everything inside counts in Hz.
#pragma once

#include <cmath>

namespace results {

/// A million is no power of two, so the product can lie a bit beside the whole number of Hz that was meant (14.070912
/// MHz): that number is given wherever it is the same MHz.
inline double hz_of_mhz(double mhz) {
  const double hz = mhz * 1e6;
  const double whole = std::nearbyint(hz);
  return whole / 1e6 == mhz ? whole : hz;
}

}  // namespace results

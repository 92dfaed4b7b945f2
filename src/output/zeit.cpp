#include "output/zeit.h"

#include <cstdint>
#include <cstdio>

namespace {

constexpr long long sekundenProTag = 86400;

struct TagUndUhrzeit {
  std::int32_t tag;   // days after the reference day; negative for days before it
  long long uhrzeit;  // 0 .. 86399
};

// Splits so that zeit == tag * 86400 + uhrzeit with uhrzeit in 0 .. 86399.
TagUndUhrzeit zerlegen(long long zeit) {
  long long tag = zeit / sekundenProTag;
  long long uhrzeit = zeit % sekundenProTag;
  if (uhrzeit < 0) {
    uhrzeit += sekundenProTag;
    --tag;
  }
  // The day count is a signed 32-bit number: beyond 2147483647 days (only absurd
  // times get there) it wraps around, as every conversion to a narrower type does.
  return {static_cast<std::int32_t>(tag), uhrzeit};
}

}  // namespace

std::string zeitToString(long long zeit, bool mitSekunden, bool ohneTag) {
  TagUndUhrzeit const t = zerlegen(zeit);
  char text[40];
  int laenge =
      std::snprintf(text, sizeof text, "%02lld:%02lld", t.uhrzeit / 3600, t.uhrzeit / 60 % 60);
  std::string ergebnis(text, static_cast<std::size_t>(laenge));
  if (mitSekunden) {
    laenge = std::snprintf(text, sizeof text, ":%02lld", t.uhrzeit % 60);
    ergebnis.append(text, static_cast<std::size_t>(laenge));
  }
  if (!ohneTag && t.tag != 0) {
    // A later day reads " +1d", an earlier one " -1d".
    ergebnis += t.tag > 0 ? " +" : " ";
    ergebnis += std::to_string(t.tag);
    ergebnis += 'd';
  }
  return ergebnis;
}

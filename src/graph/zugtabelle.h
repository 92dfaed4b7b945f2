#pragma once
// One row of the page's train table per train, with the times it has after
// post-processing. Texts are UTF-8.
#include <cstdint>
#include <list>
#include <string>
#include <vector>

struct Zug;

namespace fplc::graph {

struct Zugzeile {
  std::int32_t nummer = 0;
  std::string gattung;      // the public category, for the filter
  std::string gattungVoll;  // "RB | Nahverkehr"
  std::string linie;
  std::string tage;          // weekday digits, for the filter
  std::string verkehrstage;  // "Mo, Di, Mi, Do und Fr; 13.12.2026 – 11.12.2027; ohne 24.12.2026"
  std::string ersterHalt, letzterHalt;      // "Dornfeld 06:00"
  long long ersteZeit = 0, letzteZeit = 0;  // for sorting
  std::string folgezug;                     // the successor's number, or what stands for it
};

std::vector<Zugzeile> zugtabelle(std::list<Zug> const& zuege);

}  // namespace fplc::graph

#pragma once
// The run patterns of one layout: which entries of each train run the layout's
// timetable shows, with which attributes, and which runs share one
// "zuglauftemplate" because they differ only by a constant time shift.
#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/aussenanlage.h"
#include "model/zug.h"
#include "model/zuglauf.h"

// One attribute of an entry element. Times are kept relative to the run's
// reference time, so that runs with the same spacing compare equal.
namespace fplc::detail {

struct MusterAttribut {
  char const* name = nullptr;
  std::string text;    // the value of an attribute that is not a time
  long long zeit = 0;  // a time, relative to the run's reference time
  bool istZeit = false;
};

// One entry element of a "zuglauftemplate": "einfahrt", "ausfahrt", "halt",
// "start" or "ziel", its "ref" and its further attributes in writing order.
struct MusterEintrag {
  char const* element = nullptr;
  std::string ref;
  std::vector<MusterAttribut> attribute;
};

// How one train run appears in one layout.
struct Laufbild {
  bool hatEintraegeInAnlage = false;     // at least one entry lies in the layout
  long long reftime = 0;                 // time of the first entry in the layout
  std::vector<MusterEintrag> eintraege;  // the entries written, in running order
  // The station at which the train's routing digit for the layout is asked:
  // that of the first written stop, else that of the first written entry.
  std::string lenkzifferBahnhof;
};

struct Zuglauftemplate {
  int id = 0;                       // 1, 2, 3 in the order written
  Zuglauf const* erster = nullptr;  // the run whose name and times it carries
  Laufbild bild;
};

// A run's place in the layout's timetable: its template and its own reference time.
struct LaufImTemplate {
  Zuglauftemplate const* vorlage = nullptr;
  long long reftime = 0;
  std::string lenkzifferBahnhof;
};

struct Zuglauftemplates {
  std::list<Zuglauftemplate> vorlagen;  // in the order written
  std::unordered_map<Zuglauf const*, LaufImTemplate> fuerLauf;

  LaufImTemplate const* finde(Zuglauf const* lauf) const {
    auto it = fuerLauf.find(lauf);
    return it == fuerLauf.end() ? nullptr : &it->second;
  }
};

// The layout's view of one run. Throws an Error when an entry into or exit from
// the layout names a direction that the layout does not have.
Laufbild bildeLaufbild(Aussenanlage const& aa, Zuglauf const& lauf);

// The runs that trains use, in definition order.
std::vector<Zuglauf const*> benutzteLaeufe(std::list<Zuglauf> const& zl,
                                           std::list<Zug> const& zuege);

// Places in a list of runs, under the names of the operating points their
// entries lie at and of the layouts they enter or leave: an entry belongs to
// a layout by these names alone, so each layout need look only at its runs.
using OrtsIndex = std::unordered_map<std::string, std::vector<std::size_t>>;
void ordneNachOrt(std::vector<Zuglauf const*> const& laeufe, OrtsIndex& nachBetriebsstelle,
                  OrtsIndex& nachAnlage);
// The runs of `laeufe` with at least one entry in the layout, in their order.
std::vector<Zuglauf const*> laeufeDerAnlage(Aussenanlage const& aa,
                                            std::vector<Zuglauf const*> const& laeufe,
                                            OrtsIndex const& nachBetriebsstelle,
                                            OrtsIndex const& nachAnlage);

// The templates of every run that a train uses, in definition order of the runs;
// runs without a written entry in the layout get none.
Zuglauftemplates bildeZuglauftemplates(Aussenanlage const& aa, std::list<Zuglauf> const& zl,
                                       std::list<Zug> const& zuege);
// The same from the runs that trains use, given in definition order.
Zuglauftemplates bildeZuglauftemplates(Aussenanlage const& aa,
                                       std::vector<Zuglauf const*> const& benutzteLaeufe);

}  // namespace fplc::detail

// The library's own sources name these unqualified.
using fplc::detail::benutzteLaeufe;
using fplc::detail::bildeLaufbild;
using fplc::detail::bildeZuglauftemplates;
using fplc::detail::laeufeDerAnlage;
using fplc::detail::Laufbild;
using fplc::detail::LaufImTemplate;
using fplc::detail::MusterAttribut;
using fplc::detail::MusterEintrag;
using fplc::detail::ordneNachOrt;
using fplc::detail::OrtsIndex;
using fplc::detail::Zuglauftemplate;
using fplc::detail::Zuglauftemplates;

#include <gtest/gtest.h>

#include "model/reihung.h"
#include "model/zug.h"
#include "model/zuglauf.h"

namespace {

Reihung formation(std::uint32_t id, std::vector<int> vehicles) {
  Reihung r;
  r.id = id;
  for (int v : vehicles) r.fahrzeuge.push_back({"F" + std::to_string(v), 1, v, false});
  return r;
}

FplEintrag entry(std::uint8_t typ, long long an, long long ab) {
  FplEintrag e;
  e.typ = typ;
  e.an = an;
  e.ab = ab;
  return e;
}

}  // namespace

TEST(Reihung, CongruenceComparesEachPlaceStraightOrMirrored) {
  struct Case {
    char const* what;
    std::vector<int> self, other;
    bool congruent;
  } const cases[] = {
      {"two empty formations", {}, {}, true},
      {"same vehicles in order", {1, 2, 3}, {1, 2, 3}, true},
      {"reversed", {1, 2, 3}, {3, 2, 1}, true},
      {"middle place matches neither", {1, 2, 3}, {1, 3, 2}, false},
      {"mixed straight and mirrored places", {1, 2, 1}, {1, 2, 1}, true},
      {"different length", {1, 2}, {1, 2, 3}, false},
      {"other vehicle", {1, 2}, {1, 4}, false},
  };
  for (Case const& c : cases) {
    Reihung self = formation(1, c.self), other = formation(2, c.other);
    EXPECT_EQ(self.isKongruent(&other), c.congruent) << c.what;
  }
}

TEST(Reihung, SameIdIsCongruentAndNullIsNot) {
  Reihung a = formation(7, {1, 2}), b = formation(7, {5});
  EXPECT_TRUE(a.isKongruent(&b));
  EXPECT_FALSE(a.isKongruent(nullptr));
  EXPECT_EQ(a.getFirstFzgName(), "F1");
  EXPECT_EQ(formation(3, {}).getFirstFzgName(), "");
}

TEST(Zuglauf, EndTimeAndKindsOfTheEnds) {
  Zuglauf run;
  EXPECT_EQ(run.getZielzeit(), keineZeit);
  EXPECT_FALSE(run.isStartZuglauf());
  EXPECT_FALSE(run.isZielZuglauf());

  run.eintraege = {entry(FplEintrag::Start, keineZeit, 100), entry(FplEintrag::Ausfahrt, 200, keineZeit)};
  EXPECT_TRUE(run.isStartZuglauf());
  EXPECT_FALSE(run.isZielZuglauf());
  EXPECT_EQ(run.getZielzeit(), keineZeit);

  run.eintraege.push_back(entry(FplEintrag::Ziel, keineZeit, keineZeit));
  EXPECT_TRUE(run.isZielZuglauf());
  EXPECT_EQ(run.getZielzeit(), keineZeit);
  run.eintraege.back().ab = 300;
  EXPECT_EQ(run.getZielzeit(), 300);
  run.eintraege.back().an = 290;
  EXPECT_EQ(run.getZielzeit(), 290);
}

TEST(FplEintrag, StopsAndArrivalOrDeparture) {
  EXPECT_TRUE(entry(FplEintrag::Halt, 0, 0).isHalt());
  EXPECT_TRUE(entry(FplEintrag::Start, 0, 0).isHalt());
  EXPECT_TRUE(entry(FplEintrag::Ziel, 0, 0).isHalt());
  EXPECT_FALSE(entry(FplEintrag::Einfahrt, 0, 0).isHalt());
  EXPECT_FALSE(entry(FplEintrag::Ausfahrt, 0, 0).isHalt());
  EXPECT_EQ(entry(0, keineZeit, keineZeit).getAnOrAb(), keineZeit);
  EXPECT_EQ(entry(0, keineZeit, 60).getAnOrAb(), 60);
  EXPECT_EQ(entry(0, 30, 60).getAnOrAb(), 30);
}

TEST(Zug, StartTimeFromReferenceAndFirstEntry) {
  Zug train;
  train.reftime = 3600;
  EXPECT_EQ(train.getStartzeit(), 3600);  // no run
  Zuglauf run;
  train.zuglauf = &run;
  EXPECT_EQ(train.getStartzeit(), 3600);  // empty run
  run.eintraege = {entry(FplEintrag::Start, keineZeit, keineZeit)};
  EXPECT_EQ(train.getStartzeit(), 3600);
  run.eintraege[0].ab = 120;
  EXPECT_EQ(train.getStartzeit(), 3720);
  run.eintraege[0].an = 60;
  EXPECT_EQ(train.getStartzeit(), 3660);
}

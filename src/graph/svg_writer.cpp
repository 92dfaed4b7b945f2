#include "graph/svg_writer.h"

#include <tinyxml2.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>
#include <vector>

#include "model/zeit_arithmetik.h"
#include "output/zeit.h"

namespace fplc::graph {

namespace {

using M = SvgMasse;

constexpr char const* kPalette[] = {"#1f5fbf", "#d0402b", "#2a9d3a", "#8a3ec2",
                                    "#e08a00", "#0a9396", "#b5179e", "#6b4f2a"};
constexpr char const* kGrenzfarbe = "#c00000";

// "12.5", "80", "-3.25": at most two decimals, no locale.
std::string zahl(double wert) {
  if (!std::isfinite(wert)) return "0";
  char puffer[64];
  auto [ende, fehler] =
      std::to_chars(puffer, puffer + sizeof puffer, wert, std::chars_format::fixed, 2);
  if (fehler != std::errc()) return "0";
  std::string text(puffer, ende);
  while (text.back() == '0')
    text.pop_back();
  if (text.back() == '.') text.pop_back();
  return text == "-0" ? "0" : text;
}

// Maps kilometres and times to pixels.
class Massstab {
 public:
  explicit Massstab(Bildfahrplan const& bild) : beginn_(bild.beginn) {
    for (Ort const& o : bild.orte) {
      kmMin_ = std::min(kmMin_, o.km);
      kmMax_ = std::max(kmMax_, o.km);
    }
    if (bild.orte.empty()) kmMin_ = kmMax_ = 0;
    hoehe_ = bild.fahrten.empty() ? 60 : y(bild.ende) - M::oben;
  }
  double x(double km) const {
    if (kmMax_ <= kmMin_) return M::links;
    return M::links + (km - kmMin_) / (kmMax_ - kmMin_) * M::breite;
  }
  double y(long long zeit) const {
    return M::oben + static_cast<double>(detail::zeitMinus(zeit, beginn_)) / M::sekundenProPixel;
  }
  double unten() const { return M::oben + hoehe_; }
  double gesamtbreite() const { return M::links + M::breite + 40 + M::legende; }

 private:
  long long beginn_;
  double kmMin_ = 1e300, kmMax_ = -1e300;
  double hoehe_ = 0;
};

class SvgSchreiber {
 public:
  SvgSchreiber(Bildfahrplan const& bild, Farben const& farben)
      : bild_(bild), farben_(farben), m_(bild), p_(nullptr, false) {}

  std::string schreibe(bool eigenstaendig) {
    if (eigenstaendig) p_.PushDeclaration("xml version=\"1.0\" encoding=\"UTF-8\"");
    double const hoehe = m_.unten() + 40 + 18 * static_cast<double>(bild_.hinweise.size());
    p_.OpenElement("svg");
    p_.PushAttribute("xmlns", "http://www.w3.org/2000/svg");
    p_.PushAttribute("class", "bildfahrplan");
    p_.PushAttribute("data-strecke", bild_.strecke.c_str());
    p_.PushAttribute("width", zahl(m_.gesamtbreite()).c_str());
    p_.PushAttribute("height", zahl(hoehe).c_str());
    p_.PushAttribute("viewBox", ("0 0 " + zahl(m_.gesamtbreite()) + " " + zahl(hoehe)).c_str());
    p_.PushAttribute("font-family", "sans-serif");
    p_.PushAttribute("font-size", "11");
    element("title", "Bildfahrplan " + bild_.strecke);
    leer("rect", {{"width", zahl(m_.gesamtbreite())}, {"height", zahl(hoehe)}, {"fill", "white"}});
    raster();
    orte();
    grenzen();
    zuege();
    legende();
    hinweise();
    p_.CloseElement();
    return p_.CStr();
  }

 private:
  using Attribute = std::vector<std::pair<char const*, std::string>>;

  void oeffne(char const* name, Attribute const& attribute) {
    p_.OpenElement(name);
    for (auto const& [schluessel, wert] : attribute)
      p_.PushAttribute(schluessel, wert.c_str());
  }
  void leer(char const* name, Attribute const& attribute) {
    oeffne(name, attribute);
    p_.CloseElement();
  }
  void element(char const* name, std::string const& text, Attribute const& attribute = {}) {
    oeffne(name, attribute);
    p_.PushText(text.c_str());
    p_.CloseElement();
  }
  void linie(double x1, double y1, double x2, double y2, Attribute attribute) {
    Attribute a = {{"x1", zahl(x1)}, {"y1", zahl(y1)}, {"x2", zahl(x2)}, {"y2", zahl(y2)}};
    a.insert(a.end(), attribute.begin(), attribute.end());
    leer("line", a);
  }

  // Hour lines with labels and 10-minute lines, from the first to the last hour.
  void raster() {
    if (bild_.fahrten.empty()) return;
    oeffne("g", {{"class", "raster"}});
    double const rechts = M::links + M::breite;
    // The span is at most kMaxZeitspanne, so the count of lines is bounded.
    long long const striche = detail::zeitMinus(bild_.ende, bild_.beginn) / 600;
    for (long long i = 0; i <= striche; ++i) {
      long long const t = detail::zeitPlus(bild_.beginn, i * 600);
      double const y = m_.y(t);
      bool const stunde = i % 6 == 0;
      if (!stunde) {
        linie(M::links, y, rechts, y, {{"stroke", "#e6e6e6"}, {"stroke-width", "0.5"}});
        continue;
      }
      linie(M::links, y, rechts, y, {{"stroke", "#9a9a9a"}, {"stroke-width", "1"}});
      element("text", zeitToString(t, false, false),
              {{"x", zahl(M::links - 6)}, {"y", zahl(y + 4)}, {"text-anchor", "end"}});
    }
    p_.CloseElement();
  }

  void orte() {
    oeffne("g", {{"class", "orte"}});
    for (Ort const& o : bild_.orte) {
      double const x = m_.x(o.km);
      Attribute strich;
      switch (o.art) {
        case Ort::Bf:
          strich = {{"class", "ort bf"}, {"stroke", "#202020"}, {"stroke-width", "2"}};
          break;
        case Ort::Marke:
          strich = {{"class", "ort marke"},
                    {"stroke", "#b0b0b0"},
                    {"stroke-width", "0.5"},
                    {"stroke-dasharray", "2 4"}};
          break;
        case Ort::Hp:
          strich = {{"class", "ort hp"}, {"stroke", "#707070"}, {"stroke-width", "1"}};
          break;
        default:
          strich = {{"class", "ort"},
                    {"stroke", "#707070"},
                    {"stroke-width", "0.75"},
                    {"stroke-dasharray", "6 3"}};
      }
      linie(x, M::oben, x, m_.unten(), strich);
      if (!o.kuerzel.empty())
        element("text", o.kuerzel,
                {{"x", zahl(x)},
                 {"y", zahl(M::oben - 6)},
                 {"text-anchor", "middle"},
                 {"font-weight", o.art == Ort::Bf ? "bold" : "normal"}});
      double const y = M::oben - 22;
      std::string const name = o.name.empty() ? o.kuerzel : o.name;
      std::string const beschriftung =
          o.art == Ort::Marke ? o.name : name + " (km " + o.position + ")";
      element("text", beschriftung,
              {{"x", zahl(x)},
               {"y", zahl(y)},
               {"transform", "rotate(-60 " + zahl(x) + " " + zahl(y) + ")"},
               {"fill", o.art == Ort::Marke ? "#909090" : "#202020"}});
    }
    p_.CloseElement();
  }

  void grenzen() {
    if (bild_.grenzen.empty()) return;
    oeffne("g", {{"class", "grenzen"}});
    for (Grenze const& g : bild_.grenzen) {
      double const x = m_.x(g.km);
      linie(x, M::oben, x, m_.unten(),
            {{"class", "grenze"},
             {"stroke", kGrenzfarbe},
             {"stroke-width", "1.5"},
             {"stroke-dasharray", "8 4"}});
      element("text", g.anlagen,
              {{"x", zahl(x)},
               {"y", zahl(m_.unten() + 14)},
               {"text-anchor", "middle"},
               {"fill", kGrenzfarbe}});
    }
    p_.CloseElement();
  }

  std::string farbe(std::string const& gattung) const {
    auto f = farben_.find(gattung);
    return f == farben_.end() ? "#555555" : f->second;
  }

  void zuege() {
    if (bild_.fahrten.empty()) return;
    oeffne("g", {{"class", "zuege"}});
    for (Fahrt const& f : bild_.fahrten)
      zug(f);
    p_.CloseElement();
  }

  // The path runs through arrival and departure at every place: a dwell is a
  // vertical piece, a pass a single point.
  void zug(Fahrt const& f) {
    std::string d;
    struct Strich {
      double x1, y1, x2, y2;
    };
    std::vector<Strich> striche;
    for (auto const& abschnitt : f.abschnitte) {
      char befehl = 'M';
      double vx = 0, vy = 0;
      auto punkt = [&](double x, double y) {
        if (befehl == 'L') striche.push_back({vx, vy, x, y});
        if (!d.empty()) d += ' ';
        d += befehl;
        d += zahl(x);
        d += ' ';
        d += zahl(y);
        befehl = 'L';
        vx = x, vy = y;
      };
      for (Zeitpunkt const& z : abschnitt) {
        double const x = m_.x(bild_.orte[z.ort].km);
        punkt(x, m_.y(z.an));
        if (z.ab != z.an) punkt(x, m_.y(z.ab));
      }
    }
    std::string const nummer = std::to_string(f.nummer);
    leer("path", {{"class", "zug"},
                  {"data-nummer", nummer},
                  {"data-gattung", f.gattung},
                  {"data-tage", f.tage},
                  {"d", d},
                  {"fill", "none"},
                  {"stroke", farbe(f.gattung)},
                  {"stroke-width", "1.5"}});
    nummerAnDenPfad(f, nummer, striche);
  }

  // The number sits on the longest piece that runs between two places.
  template <typename Striche>
  void nummerAnDenPfad(Fahrt const& f, std::string const& nummer, Striche const& striche) {
    auto laenge = [](auto const& s) { return std::hypot(s.x2 - s.x1, s.y2 - s.y1); };
    auto bester = striche.end();
    for (auto s = striche.begin(); s != striche.end(); ++s)
      if (s->x1 != s->x2 && (bester == striche.end() || laenge(*s) > laenge(*bester))) bester = s;
    if (bester == striche.end()) return;
    double const x = (bester->x1 + bester->x2) / 2, y = (bester->y1 + bester->y2) / 2;
    double winkel =
        std::atan2(bester->y2 - bester->y1, bester->x2 - bester->x1) * 180 / std::numbers::pi;
    if (winkel > 90) winkel -= 180;
    if (winkel < -90) winkel += 180;
    element("text", nummer,
            {{"class", "zugnummer"},
             {"data-nummer", nummer},
             {"data-gattung", f.gattung},
             {"data-tage", f.tage},
             {"x", zahl(x)},
             {"y", zahl(y - 3)},
             {"text-anchor", "middle"},
             {"transform", "rotate(" + zahl(winkel) + " " + zahl(x) + " " + zahl(y) + ")"},
             {"fill", farbe(f.gattung)},
             // A white outline keeps the number legible where it crosses other lines.
             {"stroke", "white"},
             {"stroke-width", "3"},
             {"paint-order", "stroke"}});
  }

  void legende() {
    std::set<std::string> gattungen;
    for (Fahrt const& f : bild_.fahrten)
      gattungen.insert(f.gattung);
    if (gattungen.empty()) return;
    double const x = M::links + M::breite + 40;
    double y = M::oben;
    oeffne("g", {{"class", "legende"}});
    element("text", "Gattungen", {{"x", zahl(x)}, {"y", zahl(y)}, {"font-weight", "bold"}});
    for (std::string const& g : gattungen) {
      y += 18;
      linie(x, y - 4, x + 24, y - 4, {{"stroke", farbe(g)}, {"stroke-width", "3"}});
      element("text", g.empty() ? "(ohne Gattung)" : g, {{"x", zahl(x + 30)}, {"y", zahl(y)}});
    }
    p_.CloseElement();
  }

  void hinweise() {
    double y = m_.unten() + 36;
    for (std::string const& h : bild_.hinweise) {
      element("text", h, {{"class", "hinweis"}, {"x", zahl(M::links)}, {"y", zahl(y)}});
      y += 18;
    }
  }

  Bildfahrplan const& bild_;
  Farben const& farben_;
  Massstab m_;
  tinyxml2::XMLPrinter p_;
};

}  // namespace

Farben farbenFuer(std::set<std::string> const& gattungen) {
  Farben farben;
  std::size_t i = 0;
  for (std::string const& g : gattungen)
    farben[g] = kPalette[i++ % std::size(kPalette)];
  return farben;
}

std::string schreibeSvg(Bildfahrplan const& bild, Farben const& farben, bool eigenstaendig) {
  return SvgSchreiber(bild, farben).schreibe(eigenstaendig);
}

}  // namespace fplc::graph

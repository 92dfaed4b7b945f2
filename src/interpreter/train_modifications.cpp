// Applying the changes of an M command to one train. A run that other trains may
// share is never changed: the train gets a modified copy named with "_M".
#include "interpreter/train_modifications.h"

#include <string>
#include <utility>

namespace {

FplEintrag* ziel(std::vector<FplEintrag>& eintraege) {
  if (eintraege.empty() || eintraege.back().typ != FplEintrag::Ziel) return nullptr;
  return &eintraege.back();
}

// Only what the modifiers name is taken over; the entry keeps everything else.
void uebertrage(FplEintrag& e, FplEintrag const& auftrag) {
  if (auftrag.changedirection) e.changedirection = true;
  if (auftrag.lenkziffer != -1) e.lenkziffer = auftrag.lenkziffer;
  if (!auftrag.folge.empty()) e.folge = auftrag.folge;
  // A new category without a line ends the line, as on a stop line.
  if (!auftrag.gattung.empty()) {
    e.gattung = auftrag.gattung;
    e.linie = auftrag.linie;
  }
}

// A stop keeps its line's first token, the operating point's abbreviation. The long
// name is no key: points without one (implicit points, BTR without a name) share it.
bool istHaltAn(FplEintrag const& e, std::string const& kuerzel, std::string const& gleis) {
  return e.isHalt() && e.token && e.token->str() == kuerzel && e.gleis == gleis;
}

template <typename Aenderung>
bool anHalten(std::vector<FplEintrag>& eintraege, std::string const& kuerzel,
              std::string const& gleis, Aenderung aendere) {
  bool gefunden = false;
  for (FplEintrag& e : eintraege) {
    if (!istHaltAn(e, kuerzel, gleis)) continue;
    aendere(e);
    gefunden = true;
  }
  return gefunden;
}

std::string nummerText(Zug const& zug) {
  return std::to_string(static_cast<std::uint32_t>(zug.nummer));
}

}  // namespace

bool fplc::detail::setzeFolgeRegel(std::vector<FplEintrag>& eintraege, std::string const& regel) {
  FplEintrag* e = ziel(eintraege);
  if (e) e->folge = regel;
  return e;
}

bool fplc::detail::uebertrageAmZiel(std::vector<FplEintrag>& eintraege, FplEintrag const& auftrag) {
  FplEintrag* e = ziel(eintraege);
  if (e) uebertrage(*e, auftrag);
  return e;
}

bool fplc::detail::uebertrageAmHalt(std::vector<FplEintrag>& eintraege, std::string const& kuerzel,
                                    std::string const& gleis, FplEintrag const& auftrag) {
  return anHalten(eintraege, kuerzel, gleis, [&](FplEintrag& e) { uebertrage(e, auftrag); });
}

bool fplc::detail::wechsleGleis(std::vector<FplEintrag>& eintraege, std::string const& kuerzel,
                                std::string const& gleis, std::string const& neu) {
  return anHalten(eintraege, kuerzel, gleis, [&](FplEintrag& e) { e.gleis = neu; });
}

void Fahrplandefinition::modifyZug(Zug& zug, std::vector<Modifikation> const& mods,
                                   std::unordered_map<Zuglauf const*, Zuglauf const*>& kopien) {
  using Art = Modifikation::Art;
  // The train's own values first, so that changes of the run apply to the run
  // that a ZL of the same command gives.
  for (Modifikation const& mod : mods) {
    switch (mod.art) {
      case Art::Gattung:
        zug.gattung = mod.text;
        break;
      case Art::Linie:
        zug.liniennummer = mod.text;
        break;
      case Art::Rhg:
        zug.reihung = mod.reihung;
        zug.gedreht = mod.gedreht;
        break;
      case Art::Zl:
        zug.zuglauf = mod.zuglauf;
        if (mod.reftime != keineZeit) zug.reftime = mod.reftime;
        break;
      default:
        break;
    }
  }

  Zuglauf const* basis = zug.zuglauf;
  std::vector<FplEintrag> eintraege;
  if (basis) eintraege = basis->eintraege;
  bool geaendert = false;
  for (Modifikation const& mod : mods) {
    if (!mod.aendertZuglauf()) continue;
    bool passt = false;
    switch (mod.art) {
      case Art::FolgeZn:
        passt = setzeFolgeRegel(eintraege, mod.text);
        break;
      case Art::Ziel:
        passt = uebertrageAmZiel(eintraege, mod.auftrag);
        break;
      case Art::Auftrag:
        passt = uebertrageAmHalt(eintraege, mod.kuerzel, mod.gleis, mod.auftrag);
        break;
      case Art::Gleis:
        passt = wechsleGleis(eintraege, mod.kuerzel, mod.gleis, mod.text);
        break;
      default:
        break;
    }
    geaendert = geaendert || passt;
    if (passt) continue;
    // The train is left as it is in this respect; the other trains and changes go on.
    if (mod.art == Art::FolgeZn)
      warnungen.emplace_back(mod.keyword, "Modifikation der ZN-Regel konnte auf Zug " +
                                              nummerText(zug) + " nicht angewandt werden.");
    else
      warnungen.emplace_back(mod.keyword, "Modifikation von " + mod.keyword->str() +
                                              " konnte bei Zug " + nummerText(zug) +
                                              " nicht angewandt werden.");
  }
  if (!geaendert) return;

  // Trains of one command that share a run share its modified copy too.
  Zuglauf const*& kopie = kopien[basis];
  if (!kopie) {
    Zuglauf& neu = zl.emplace_back(*basis);
    neu.eintraege = std::move(eintraege);
    neu.name += "_M";
    neu.id = static_cast<int>(++zlCounter);
    kopie = &neu;
  }
  zug.zuglauf = kopie;
}

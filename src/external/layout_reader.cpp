// Reads the layout file of an interlocking (".stwa"): its operating points, its
// directions of entry and exit, and the signal flags of its operating points.
#include <tinyxml2.h>
#include <cstring>

#include "external/dateizugriff.h"
#include "model/aussenanlage.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"

namespace {

using tinyxml2::XMLElement;

bool hasName(XMLElement const* e, char const* name) {
  return std::strcmp(e->Name(), name) == 0;
}

// A missing attribute reads as the empty text.
std::string textOf(XMLElement const* e, char const* attribute) {
  char const* value = e->Attribute(attribute);
  return value ? value : "";
}

bool isSet(XMLElement const* e, char const* attribute) {
  char const* value = e->Attribute(attribute);
  return value && *value;
}

// The layout's "fplcat" classes: 1, 2 and 3 are stations, 7 is a halt; anything
// else leaves the kind found so far.
std::uint8_t kindOfFplcat(std::string const& value, std::uint8_t kindSoFar) {
  if (value.empty()) return kindSoFar;
  if (value[0] == '1' || value[0] == '2' || value[0] == '3') return 1;
  if (value[0] == '7') return 2;
  return kindSoFar;
}

using Info = Aussenanlage::BetriebsstelleInfo;
using Betriebsstellen = std::unordered_map<std::string, Info>;

// Finds the entry a signal refers to: the first entry of the layout's map, in
// the map's iteration order, with the signal's id. Scanning the map per signal
// is quadratic in the size of the file; the index counts the entries per id, so
// that an id with one entry is found at once and only ids shared by several
// entries are searched in the map's order (the result kept until a point changes
// the map).
class IdIndex {
 public:
  explicit IdIndex(Betriebsstellen& map) : map_(map) {
    for (auto& [name, info] : map_)
      add(info);
  }

  // Called before `info` (an entry of the map) is entered again.
  void remove(Info const& info) {
    auto it = ids_.find(info.id);
    if (it == ids_.end()) return;
    if (--it->second.anzahl == 0)
      ids_.erase(it);
    else
      it->second.einziger = nullptr;  // which one is left is not known here
  }

  void add(Info& info) {
    Eintrag& eintrag = ids_[info.id];
    eintrag.einziger = ++eintrag.anzahl == 1 ? &info : nullptr;
    ++stand_;
  }

  Info* first(int id) {
    auto it = ids_.find(id);
    if (it == ids_.end()) return nullptr;
    Eintrag& eintrag = it->second;
    if (eintrag.einziger) return eintrag.einziger;
    if (eintrag.gesucht && eintrag.stand == stand_) return eintrag.gesucht;
    for (auto& [name, info] : map_)
      if (info.id == id) {
        if (eintrag.anzahl == 1) eintrag.einziger = &info;
        eintrag.gesucht = &info;
        eintrag.stand = stand_;
        return &info;
      }
    return nullptr;
  }

 private:
  struct Eintrag {
    std::size_t anzahl = 0;
    Info* einziger = nullptr;  // the entry when it is the only one with the id
    Info* gesucht = nullptr;   // the first in the map's order, found at `stand`
    std::size_t stand = 0;
  };
  Betriebsstellen& map_;
  std::unordered_map<int, Eintrag> ids_;
  std::size_t stand_ = 0;  // counts changes of the map
};

struct Ziel {
  Aussenanlage& anlage;
  IdIndex& nachId;
  std::list<Betriebsstelle>& betriebsstellen;
  std::unordered_map<std::string, Betriebsstelle*>& byDs100;
  std::unordered_map<std::string, Aussenanlage::Fahrtrichtung>& fahrtrichtungen;
  std::vector<Error>& warnungen;
  Token const* token;
};

void readBetriebsstelle(XMLElement const* e, Ziel& ziel) {
  std::string const name = textOf(e, "name");
  std::uint8_t kind = 0;
  Betriebsstelle* created = nullptr;
  for (XMLElement const* a = e->FirstChildElement("abbreviation"); a;
       a = a->NextSiblingElement("abbreviation")) {
    std::string const vname = textOf(a, "vname");
    if (vname == "ds100") {
      std::string const ds100 = textOf(a, "value");
      auto found = ziel.byDs100.find(ds100);
      if (found == ziel.byDs100.end()) {
        created = &ziel.betriebsstellen.emplace_back();
        created->ds100 = ds100;
        created->name = name;
        ziel.byDs100.emplace(ds100, created);
      } else if (found->second->name != name) {
        // The first definition stays; the layout's different name is only reported.
        ziel.warnungen.emplace_back(
            ziel.token,
            std::string("Widerspruch: Außenanlage definiert "_cp1252) + ds100 + " anders.");
      }
    } else if (vname == "fplcat") {
      kind = kindOfFplcat(textOf(a, "value"), kind);
    }
  }
  // Only a point that this file created takes its kind from the file; a point known
  // before keeps the kind that its declaration gave it.
  if (created && created->fplcat == 0) created->fplcat = kind;

  auto [eintrag, neu] = ziel.anlage.betriebsstellen.try_emplace(name);
  Info& info = eintrag->second;
  if (!neu) ziel.nachId.remove(info);
  info = Info();
  info.id = e->IntAttribute("id", 0);
  ziel.nachId.add(info);
}

void readEinfahrrichtung(XMLElement const* e, Ziel& ziel) {
  char const* key = e->Attribute("name");
  for (XMLElement const* a = e->FirstChildElement("abbreviation"); a;
       a = a->NextSiblingElement("abbreviation"))
    if (textOf(a, "vname") == "zuglinor_RiA")
      key = a->Attribute("value") ? a->Attribute("value") : "";
  if (!key) return;

  Aussenanlage::Fahrtrichtung& richtung = ziel.fahrtrichtungen[key];
  richtung.name = key;
  richtung.id = e->IntAttribute("id", 0);
  richtung.lenkziffern = 0xFFFF;
  richtung.ausAussenanlage = true;
  // A key met again, in this file or another, collects the connections of all its
  // occurrences.
  for (XMLElement const* c = e->FirstChildElement("anschluss"); c;
       c = c->NextSiblingElement("anschluss"))
    richtung.anschluesse.push_back(c->IntAttribute("id", 0));
}

// Flags are only ever set: a signal before its operating point has no effect,
// because entering the point resets its flags.
void readSignal(XMLElement const* e, Ziel& ziel) {
  int const id = e->IntAttribute("betriebsstelle", 0);
  auto setFirst = [&](bool Info::*flag) {
    if (Info* info = ziel.nachId.first(id)) info->*flag = true;
  };
  if (isSet(e, "stationforlengthless")) setFirst(&Info::stationforlengthless);
  if (isSet(e, "hauptsignaltyp")) setFirst(&Info::hauptsignaltyp);
}

}  // namespace

void Aussenanlage::readSTWA(
    std::list<Betriebsstelle>& betriebsstellenListe,
    std::unordered_map<std::string, Betriebsstelle*>& betriebsstellenByDs100,
    std::unordered_map<std::string, Fahrtrichtung>& richtungen, std::vector<Error>& warnungen,
    Token const* token) {
  tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
  // Read as a regular file only: a FIFO or a device must not block or never end.
  std::string text;
  if (fplc::detail::leseRegulaereDatei(datei, text, fplc::detail::maxXmlBytes) !=
          fplc::detail::Lesestatus::Gelesen ||
      doc.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS)
    throw Error(token, "Außenanlage konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252);
  XMLElement const* root = doc.FirstChildElement();
  if (!root) throw Error(token, "Außenanlage: Beschädigtes XML!"_cp1252);
  if (!hasName(root, "stelltisch") && !hasName(root, "aussenanlage"))
    throw Error(token, "Datei ist keine Quorvel-Außenanlage!"_cp1252);

  IdIndex nachId(betriebsstellen);
  Ziel ziel{*this,     nachId, betriebsstellenListe, betriebsstellenByDs100, richtungen,
            warnungen, token};
  for (XMLElement const* e = root->FirstChildElement(); e; e = e->NextSiblingElement()) {
    if (hasName(e, "betriebsstelle"))
      readBetriebsstelle(e, ziel);
    else if (hasName(e, "einfahrrichtung"))
      readEinfahrrichtung(e, ziel);
    else if (hasName(e, "signal"))
      readSignal(e, ziel);
  }
}

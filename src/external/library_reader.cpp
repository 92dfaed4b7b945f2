// Reads a vehicle library file: one vehicle per "fahrzeugtemplate".
#include <tinyxml2.h>
#include <cstring>

#include "external/dateizugriff.h"
#include "external/install_path.h"
#include "external/installation.h"
#include "model/fzg.h"
#include "tokenizer/cp1252.h"
#include "tokenizer/error.h"

namespace {

using tinyxml2::XMLElement;

// A flag counts only in its exact form: group and the value "true".
bool hasFlag(XMLElement const* vehicle, char const* group) {
  for (XMLElement const* v = vehicle->FirstChildElement("undocumentedValue"); v;
       v = v->NextSiblingElement("undocumentedValue")) {
    char const* g = v->Attribute("group");
    char const* value = v->Attribute("value");
    if (g && value && std::strcmp(g, group) == 0 && std::strcmp(value, "true") == 0) return true;
  }
  return false;
}

// A repeated id overwrites the numbers and flags of the earlier template, and its
// name only when the later template has one.
void readFahrzeug(XMLElement const* e, std::unordered_map<int, Fzg>& fahrzeuge) {
  Fzg& fzg = fahrzeuge[e->IntAttribute("id", 0)];
  if (char const* name = e->Attribute("name")) fzg.name = name;
  fzg.achsanzahl = e->IntAttribute("achsanzahl", 0);
  // Metres become millimetres, truncated toward zero as the simulator does; in
  // single precision, so that 26.4 gives 26400. A length beyond the range of int
  // (or not a number) counts as malformed and gives 0.
  float const millimetres = e->FloatAttribute("laenge", 0.0f) * 1000.0f;
  fzg.laenge = millimetres >= -2147483648.0f && millimetres < 2147483648.0f
                   ? static_cast<int>(millimetres)
                   : 0;
  fzg.masse = e->IntAttribute("masse", 0);
  fzg.vmax = e->IntAttribute("vmax", 0);
  fzg.hasPantograph = hasFlag(e, "HasPantograph");
  fzg.passengerCar = hasFlag(e, "PassengerCar");
}

}  // namespace

void FzgLib::readSTWB(std::vector<Error>&, Token const* token) {
  std::string const path = expandInstallPath(datei);
  tinyxml2::XMLDocument doc(true, tinyxml2::PRESERVE_WHITESPACE);
  // Read as a regular file only: a FIFO or a device must not block or never end.
  std::string text;
  if (fplc::detail::leseRegulaereDatei(path, text, fplc::detail::maxXmlBytes) !=
          fplc::detail::Lesestatus::Gelesen ||
      doc.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS)
    throw Error(token, "Bibliothek konnte nicht geöffnet werden oder ist keine XML-Datei!"_cp1252);
  XMLElement const* root = doc.FirstChildElement();
  if (!root) throw Error(token, "Bibliothek: Beschädigtes XML!"_cp1252);
  if (std::strcmp(root->Name(), "bibliothek") != 0)
    throw Error(token, "Datei ist keine Quorvel-Bibliothek!"_cp1252);

  for (XMLElement const* e = root->FirstChildElement("fahrzeugtemplate"); e;
       e = e->NextSiblingElement("fahrzeugtemplate"))
    readFahrzeug(e, fahrzeuge);
}

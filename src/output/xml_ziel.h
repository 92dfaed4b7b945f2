#pragma once
// Where the timetable writer puts its elements. The writer opens an element,
// gives it its attributes, writes its children and closes it, strictly in that
// order, so the same calls can build a document in memory or print its text
// straight away; printed, both give the same bytes.
#include <tinyxml2.h>

#include <vector>

namespace fplc::detail {

// Builds the elements into a document, as write() returns it.
class DokumentZiel {
 public:
  explicit DokumentZiel(tinyxml2::XMLDocument& doc) : doc(doc) {}

  // The XML declaration, before whatever the document already holds.
  void deklaration() { doc.InsertFirstChild(doc.NewDeclaration()); }

  void oeffne(char const* name) {
    tinyxml2::XMLElement* e = doc.NewElement(name);
    (offen.empty() ? static_cast<tinyxml2::XMLNode*>(&doc) : offen.back())->InsertEndChild(e);
    offen.push_back(e);
  }
  void attribut(char const* name, char const* wert) { offen.back()->SetAttribute(name, wert); }
  void schliesse() { offen.pop_back(); }

 private:
  tinyxml2::XMLDocument& doc;
  std::vector<tinyxml2::XMLElement*> offen;  // the open elements, innermost last
};

// Prints the elements as XMLDocument::Print would print the built document,
// without keeping the document in memory.
class TextZiel {
 public:
  explicit TextZiel(tinyxml2::XMLPrinter& printer) : printer(printer) {}

  // The text of the declaration that XMLDocument::NewDeclaration() makes.
  void deklaration() { printer.PushDeclaration("xml version=\"1.0\" encoding=\"UTF-8\""); }
  void oeffne(char const* name) { printer.OpenElement(name, false); }
  void attribut(char const* name, char const* wert) { printer.PushAttribute(name, wert); }
  void schliesse() { printer.CloseElement(false); }

 private:
  tinyxml2::XMLPrinter& printer;
};

}  // namespace fplc::detail

#pragma once
// The timetable definition: owns the token lists of every file read and every
// record that its commands build, and offers the library's operations.
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "../days/verkehrstag.h"
#include "../export.h"
#include "../tokenizer/error.h"
#include "../tokenizer/token.h"
#include "../tokenizer/token_list.h"
#include "aussenanlage.h"
#include "betriebsstelle.h"
#include "fpl_eintrag.h"
#include "fzg.h"
#include "reihung.h"
#include "strecke.h"
#include "zug.h"
#include "zuglauf.h"

namespace tinyxml2 {
class XMLDocument;
class XMLPrinter;
}  // namespace tinyxml2

class FPLC_API Fahrplandefinition {
 public:
  // One timetable file that OUT formed, and whether saving it succeeded.
  struct Ausgabe {
    std::string pfad;
    bool geschrieben = false;
    int fehlerCode = 0;  // the errno of the failed save; 0 when written
  };

  // How DAT reaches the files it includes. By default it opens the path on disk;
  // an editor hands in the texts of its open buffers instead. The function gets
  // the expanded path and returns the text, or null to read the file from disk.
  using DefinitionsQuelle = std::function<std::unique_ptr<std::istream>(std::string const& pfad)>;

  Fahrplandefinition();
  ~Fahrplandefinition();
  Fahrplandefinition(Fahrplandefinition const&) = delete;
  Fahrplandefinition& operator=(Fahrplandefinition const&) = delete;

  // --- reading and running (interpreter/) ---
  void read(std::istream& in, std::string const& filename);
  void execute(bool skipOutput, TokenList const* list);
  void execute(bool skipOutput, Token const* command);
  // `execute(skipOutput, nullptr)` runs the main file.
  void execute(bool skipOutput, std::nullptr_t) {
    execute(skipOutput, static_cast<TokenList const*>(nullptr));
  }
  // The command token being dispatched (innermost, for includes); null after a
  // run that ended normally. When an exception escapes execute it keeps the
  // command that failed, so a front-end can place a standard exception.
  Token const* getCurrentCommand() const { return currentCommand; }
  // Where included definition texts come from (see DefinitionsQuelle); kept by clear.
  void setDefinitionsQuelle(DefinitionsQuelle quelle) { definitionsQuelle = std::move(quelle); }
  // The folders that every file DAT, AA, BIB and OUT open or write must lie in,
  // after ".." and symbolic links are resolved; empty: anywhere. Kept by clear.
  void setErlaubteVerzeichnisse(std::vector<std::string> verzeichnisse);
  std::vector<std::string> const& getErlaubteVerzeichnisse() const { return erlaubteVerzeichnisse; }
  // How many files DAT may include and how many bytes of definition text all
  // files read may hold together, until the definition is cleared. Kept by clear.
  void setLesegrenzen(std::size_t einbindungen, std::size_t bytes) {
    maxEinbindungen = einbindungen;
    maxDefinitionsBytes = bytes;
  }
  // Empties every container and token list so that a new definition can be read.
  // keepSettings: the current settings category, line number, delay model and
  // routing digit survive; formation and run settings are always reset, because
  // the records they refer to are gone.
  void clear(bool keepSettings);

  // --- diagnostics ---
  std::string createTokenLocationString(Token const* tok) const;
  std::string stringifyTokens();
  std::vector<Error> const& getWarnungen() const { return warnungen; }

  // --- look-ups ---
  Token* getFrontToken() const { return tokenLists.front()->front(); }
  std::unordered_map<std::string, Strecke> const& getBIF() const { return bif; }
  std::unordered_map<std::string, Betriebsstelle*> const& getBTR() const { return btr; }
  std::list<Zuglauf> const& getZL() const { return zl; }
  std::list<Zug> const& getZuege() const { return zuege; }
  Betriebsstelle* getBTR_weak(Token const* t);
  Fzg const& getFzg(Reihung const* r, std::size_t i) const;

  // --- days (days/) ---
  unsigned calcVTValue(Token const* t) const;
  Verkehrstag const* createVT_weak(Verkehrstag const* base, unsigned mask);
  Token const* parseInlineVT(Token const* t, Verkehrstag const** out);

  // --- resolution (resolve/) ---
  void postprocess();
  void validate();
  signed char calcLenkziffer(Zug const* zug, std::string const& bahnhof) const;
  static std::pair<std::string, std::string> getGattung(Aussenanlage const& aa, Zug const* zug);
  static std::string getLinie(Aussenanlage const& aa, Zug const* zug);

  // --- output (output/) ---
  void write(tinyxml2::XMLDocument& doc, std::string const& name, Aussenanlage const& aussenanlage,
             std::string const& aussenanlageRef) const;
  std::vector<Ausgabe> const& getAusgaben() const { return ausgaben; }
  // Whether an OUT was passed over because output was skipped: a front-end that
  // checks without writing can then post-process itself before validating, so
  // that its findings are those of a real run.
  bool isAusgabeUebersprungen() const { return ausgabeUebersprungen; }

  // --- read access for front-ends, editors and tests ---
  std::vector<std::unique_ptr<TokenList>> const& getTokenLists() const { return tokenLists; }
  std::vector<std::pair<std::string, std::string>> const& getAutoren() const { return autoren; }
  std::list<Aussenanlage> const& getAussenanlagen() const { return aussenanlagen; }
  std::list<Betriebsstelle> const& getBetriebsstellen() const { return betriebsstellen; }
  std::vector<FzgLib> const& getFzgLibs() const { return fzgLibs; }
  std::list<Reihung> const& getReihungen() const { return reihungen; }
  std::unordered_map<std::string, Reihung*> const& getReihungenByName() const {
    return reihungenByName;
  }
  std::unordered_map<std::string, std::pair<int, int>> const& getFzgNamen() const {
    return fzgNamen;
  }
  std::list<Verkehrstag> const& getVerkehrstage() const { return verkehrstage; }
  std::unordered_map<std::string, Verkehrstag const*> const& getVTByName() const {
    return vtByName;
  }
  Verkehrstag const& getDefaultVT() const { return defaultVT; }
  std::unordered_map<std::string, Zuglauf*> const& getZLByName() const { return zlByName; }
  std::list<Zuglaufsegment> const& getSegmente() const { return segmente; }
  std::unordered_map<std::string, Zuglaufsegment*> const& getSegmenteByKey() const {
    return segmenteByKey;
  }
  std::unordered_map<std::string, Zug*> const& getZuegeByNummer() const { return zuegeByNummer; }
  std::string const& getGattungSetting() const { return gattung; }
  std::string const& getLiniennummerSetting() const { return liniennummer; }
  std::string const& getVerspaetungsmodellSetting() const { return verspaetungsmodell; }
  Reihung const* getReihungSetting() const { return reihung; }
  bool getReihungGedrehtSetting() const { return reihungGedreht; }
  Zuglauf const* getZuglaufSetting() const { return zuglauf; }
  std::int8_t getLenkzifferSetting() const { return lenkziffer; }
  bool isPostprocessed() const { return postprocessed; }

  // Deepest nesting of DAT includes before the include is refused.
  static constexpr unsigned maxDateiTiefe = 64;
  // Defaults of the limits on included files and on definition text in total.
  static constexpr std::size_t standardEinbindungen = 10000;
  static constexpr std::size_t standardDefinitionsBytes = std::size_t{16} << 20;

 private:
  using Kommando = void (Fahrplandefinition::*)(Token const* cmd, bool skipOutput);
  struct KommandoEintrag {
    char const* keyword;
    Kommando handler;
  };
  static KommandoEintrag const kommandos[];

  // --- command handlers, one per keyword, in the order of the dispatch table ---
  void kommandoAUT(Token const* cmd, bool skipOutput);
  void kommandoBTR(Token const* cmd, bool skipOutput);
  void kommandoAA(Token const* cmd, bool skipOutput);
  void kommandoLZ(Token const* cmd, bool skipOutput);
  void kommandoBIB(Token const* cmd, bool skipOutput);
  void kommandoFZG(Token const* cmd, bool skipOutput);
  void kommandoRHG(Token const* cmd, bool skipOutput);
  void kommandoVT(Token const* cmd, bool skipOutput);
  void kommandoZL(Token const* cmd, bool skipOutput);
  void kommandoZLS(Token const* cmd, bool skipOutput);
  void kommandoSET(Token const* cmd, bool skipOutput);
  void kommandoTZ(Token const* cmd, bool skipOutput);
  void kommandoZ(Token const* cmd, bool skipOutput);
  void kommandoM(Token const* cmd, bool skipOutput);
  void kommandoDAT(Token const* cmd, bool skipOutput);
  void kommandoBIF(Token const* cmd, bool skipOutput);
  void kommandoOUT(Token const* cmd, bool skipOutput);

  // --- interpreter: definition reading, SET, DAT ---
  // (helpers of the interpreter core go here)

  // --- infrastructure and libraries ---
  // (helpers of AUT, BTR, AA, LZ, BIB, FZG, RHG, BIF go here)
  void meldeUnbenutzteFahrtrichtungen(Aussenanlage const& aa, Token const* cmd);

  // --- days ---
  unsigned calcVTValue(Token const* t, unsigned depth) const;
  // (further helpers of VT and day expressions go here)

  // --- train runs, segments, modifiers, number lists ---
  void parseZL(Token const* blockOpen);
  static void parseModifikatoren(FplEintrag& eintrag, Token const*& cursor);
  static Token const* parseList(Token const* open, std::vector<unsigned int>& numbers);
  // Automatic time of a "<-" or "->" entry (index into the run) that has none of its own.
  static void berechneZeit(std::vector<FplEintrag>& eintraege, std::size_t index,
                           std::size_t& pendingExit, Token const* tok);
  Token const* parseHaltezeile(std::vector<FplEintrag>& eintraege, Token const* tok,
                               Token const* blockClose, std::size_t& pendingExit);
  void fuegeSegmentEin(std::vector<FplEintrag>& eintraege, Token const* naechsterHalt,
                       std::string const& vzg, Token const* zeilenende, std::size_t& pendingExit);
  friend struct ParserTestAccess;  // lets tests reach the private parsers
  // (further helpers of ZL, ZLS and lists go here)

  // --- trains ---
  Token const* parseZLSpec(Token const* tok, Zuglauf const** run, long long* time);
  // (further helpers of Z, TZ and M go here)
  // A new train with the current settings, appended and entered under `nummerText`.
  Zug& createZug(Token const* cmd, std::int32_t nummer, std::string const& nummerText);
  void kommandoTZZahlen(Token const* cmd);
  void kommandoTZListe(Token const* cmd);
  void kommandoTZBlock(Token const* cmd);
  struct Modifikation;  // one change made by M (interpreter/train_modifications.h)
  Token const* parseModifikation(Token const* keyword, Modifikation& mod);
  // `kopien`: the modified copy made of each run during one M command.
  void modifyZug(Zug& zug, std::vector<Modifikation> const& mods,
                 std::unordered_map<Zuglauf const*, Zuglauf const*>& kopien);

  // --- resolution ---
  signed char calcLenkziffer(Zug const* zug, Aussenanlage const* aa,
                             std::string const& bahnhof) const;
  // (further helpers of postprocess and validate go here)
  friend struct ResolveTestAccess;  // lets tests run the resolution with plain scans

  // --- output ---
  // write() into a printer: the text of the same document, which OUT saves
  // without building the document in memory.
  void writeText(tinyxml2::XMLPrinter& printer, std::string const& name,
                 Aussenanlage const& aussenanlage, std::string const& aussenanlageRef) const;
  // The writer of both: `Ziel` builds a document or prints (output/xml_ziel.h).
  template <typename Ziel>
  void schreibeFahrplan(Ziel& ziel, std::string const& name, Aussenanlage const& aussenanlage,
                        std::string const& aussenanlageRef) const;
  // The trains of each run with their places in the train list, so that writing
  // every layout need not walk the whole list for each. Built by the first
  // write() after post-processing and used only while `postprocessed` holds:
  // the commands that change trains or runs clear that flag, and postprocess()
  // and clear() drop the index.
  struct Schreibindex {
    std::unordered_map<Zuglauf const*, std::vector<std::pair<std::size_t, Zug const*>>>
        zuegeNachLauf;
    std::vector<Zuglauf const*> benutzteLaeufe;  // runs with trains, in definition order
    // Places in benutzteLaeufe of the runs with an entry at an operating point,
    // and of those entering or leaving a layout, so that each layout looks only
    // at the runs that touch it.
    std::unordered_map<std::string, std::vector<std::size_t>> laeufeNachBetriebsstelle;
    std::unordered_map<std::string, std::vector<std::size_t>> laeufeNachAnlage;
    bool aktuell = false;
  };
  mutable Schreibindex schreibindex;

  // Token lists, one per file read, the main file first.
  std::vector<std::unique_ptr<TokenList>> tokenLists;
  std::vector<std::pair<std::string, std::string>> autoren;  // (name, kommentar) from AUT

  std::list<Aussenanlage> aussenanlagen;
  std::unordered_map<std::string, Aussenanlage*> aussenanlagenByName;
  std::list<Betriebsstelle> betriebsstellen;
  std::unordered_map<std::string, Betriebsstelle*> btr;  // by ds100
  std::vector<FzgLib> fzgLibs;
  std::list<Reihung> reihungen;
  std::unordered_map<std::string, Reihung*> reihungenByName;
  std::uint32_t reihungCounter = 0;
  std::unordered_map<std::string, std::pair<int, int>> fzgNamen;  // name -> (library, vehicle id)
  std::unordered_map<std::string, Strecke> bif;

  std::list<Verkehrstag> verkehrstage;
  std::unordered_map<std::string, Verkehrstag const*> vtByName;
  Verkehrstag defaultVT;
  std::unordered_map<std::string, std::unordered_map<std::uint32_t, Verkehrstag const*>> implicitVT;
  std::uint32_t vtCounter = 0;

  std::list<Zuglauf> zl;
  std::unordered_map<std::string, Zuglauf*> zlByName;
  std::uint32_t zlCounter = 0;
  std::list<Zuglaufsegment> segmente;
  std::unordered_map<std::string, Zuglaufsegment*> segmenteByKey;

  std::list<Zug> zuege;
  std::unordered_map<std::string, Zug*> zuegeByNummer;

  std::vector<Error> warnungen;
  std::vector<Ausgabe> ausgaben;

  // Current settings (SET), taken over by every train made afterwards.
  std::string gattung;
  std::string liniennummer;
  std::string verspaetungsmodell;
  Reihung const* reihung = nullptr;
  bool reihungGedreht = false;
  Zuglauf const* zuglauf = nullptr;
  std::int8_t lenkziffer = -1;
  bool postprocessed = false;
  bool ausgabeUebersprungen = false;

  Token const* currentCommand = nullptr;
  unsigned dateiTiefe = 0;  // nesting depth of DAT includes being executed
  DefinitionsQuelle definitionsQuelle;
  std::vector<std::string> erlaubteVerzeichnisse;  // resolved; empty: anywhere
  std::size_t maxEinbindungen = standardEinbindungen;
  std::size_t maxDefinitionsBytes = standardDefinitionsBytes;
  std::size_t gelesenBytes = 0;  // definition text read since the last clear
};

#include "graph/html_seite.h"

#include <set>

namespace fplc::graph {

namespace {

constexpr char const* kStil = R"(body{font-family:sans-serif;margin:1.5em;color:#202020}
h1{font-size:1.5em}h2{font-size:1.2em;margin-top:1.5em}
.filter{background:#f3f3f3;padding:.5em;border-left:4px solid #1f5fbf}
.hinweis{color:#a00000}
.graph{overflow-x:auto}
table{border-collapse:collapse;font-size:.9em}
th,td{border:1px solid #ccc;padding:.2em .5em;text-align:left}
th{background:#eee;cursor:pointer;user-select:none}
th.auf::after{content:" \25B2"}th.ab::after{content:" \25BC"}
.bedienung{margin:.5em 0}.bedienung label{margin-right:1em}
)";

// Sorting by a column's data-sort values, filtering rows and train paths alike.
constexpr char const* kSkript = R"(
(function () {
  var tabelle = document.getElementById('zuege');
  var koerper = tabelle.tBodies[0];
  var nummer = document.getElementById('f-nummer');
  var gattung = document.getElementById('f-gattung');
  var tag = document.getElementById('f-tag');
  function passt(el) {
    var n = nummer.value.trim();
    if (n !== '' && el.getAttribute('data-nummer').indexOf(n) !== 0) return false;
    if (gattung.value !== '' && el.getAttribute('data-gattung') !== gattung.value) return false;
    if (tag.value !== '' && el.getAttribute('data-tage').indexOf(tag.value) < 0) return false;
    return true;
  }
  function filtere() {
    var sichtbar = 0;
    Array.prototype.forEach.call(koerper.rows, function (zeile) {
      var ja = passt(zeile);
      zeile.hidden = !ja;
      if (ja) sichtbar++;
    });
    document.querySelectorAll('svg .zug, svg .zugnummer').forEach(function (el) {
      el.style.display = passt(el) ? '' : 'none';
    });
    document.getElementById('anzahl').textContent = sichtbar + ' von ' + koerper.rows.length + ' Zügen';
  }
  function sortiere(spalte, kopf) {
    var auf = !kopf.classList.contains('auf');
    tabelle.querySelectorAll('th').forEach(function (th) { th.classList.remove('auf', 'ab'); });
    kopf.classList.add(auf ? 'auf' : 'ab');
    var zahl = kopf.getAttribute('data-art') === 'zahl';
    var zeilen = Array.prototype.slice.call(koerper.rows);
    zeilen.sort(function (a, b) {
      var x = a.cells[spalte].getAttribute('data-sort'), y = b.cells[spalte].getAttribute('data-sort');
      var v = zahl ? Number(x) - Number(y) : x.localeCompare(y, 'de');
      return auf ? v : -v;
    });
    zeilen.forEach(function (z) { koerper.appendChild(z); });
  }
  tabelle.querySelectorAll('th').forEach(function (th, i) {
    th.addEventListener('click', function () { sortiere(i, th); });
  });
  [nummer, gattung, tag].forEach(function (el) { el.addEventListener('input', filtere); });
  filtere();
  document.body.setAttribute('data-bereit', 'ja');
})();
)";

constexpr char const* kTage[] = {"Mo", "Di", "Mi", "Do", "Fr", "Sa", "So"};

std::string zelle(std::string const& text, std::string const& sortierung) {
  return "<td data-sort=\"" + html(sortierung) + "\">" + html(text) + "</td>";
}

std::string zeile(Zugzeile const& z) {
  std::string const n = std::to_string(z.nummer);
  return "<tr data-nummer=\"" + n + "\" data-gattung=\"" + html(z.gattung) + "\" data-tage=\"" +
         html(z.tage) + "\">" + zelle(n, n) + zelle(z.gattungVoll, z.gattungVoll) +
         zelle(z.linie, z.linie) + zelle(z.verkehrstage, z.tage) +
         zelle(z.ersterHalt, std::to_string(z.ersteZeit)) +
         zelle(z.letzterHalt, std::to_string(z.letzteZeit)) + zelle(z.folgezug, z.folgezug) +
         "</tr>\n";
}

std::string bedienung(Seite const& seite) {
  std::set<std::string> gattungen;
  for (Zugzeile const& z : seite.zuege)
    gattungen.insert(z.gattung);
  std::string text =
      "<div class=\"bedienung\"><label>Nummer <input id=\"f-nummer\" type=\"search\" "
      "inputmode=\"numeric\"></label><label>Gattung <select id=\"f-gattung\"><option "
      "value=\"\">alle</option>";
  for (std::string const& g : gattungen)
    text += "<option value=\"" + html(g) + "\">" + html(g.empty() ? "(ohne)" : g) + "</option>";
  text += "</select></label><label>Tag <select id=\"f-tag\"><option value=\"\">alle</option>";
  for (int i = 0; i < 7; ++i) {
    char const ziffer = static_cast<char>('1' + i);
    bool const gewaehlt = seite.filter.art != Tagesfilter::Alle && seite.filter.wochentag == ziffer;
    text += std::string("<option value=\"") + ziffer + "\"" + (gewaehlt ? " selected" : "") + ">" +
            kTage[i] + "</option>";
  }
  return text + "</select></label><span id=\"anzahl\"></span></div>\n";
}

std::string filterText(Tagesfilter const& filter) {
  if (filter.art == Tagesfilter::Alle)
    return "Gezeichnet sind alle Züge, ohne Tagesfilter: jeder Zug erscheint, gleich an welchen "
           "Tagen er verkehrt. Mit --graph-day oder --graph-date zeigt der Bildfahrplan einen "
           "Tag.";
  std::string text = "Gezeichnet sind die Züge, die " + filter.beschreibung() + " verkehren";
  if (filter.art == Tagesfilter::Datum)
    text +=
        " (nach dem Wochentag ihrer Verkehrstage; Gültigkeitszeiträume und Ausnahmen sind "
        "nicht geprüft)";
  return text + ".";
}

}  // namespace

std::string html(std::string const& text) {
  std::string aus;
  for (char c : text) {
    switch (c) {
      case '&':
        aus += "&amp;";
        break;
      case '<':
        aus += "&lt;";
        break;
      case '>':
        aus += "&gt;";
        break;
      case '"':
        aus += "&quot;";
        break;
      default:
        aus += c;
    }
  }
  return aus;
}

std::string schreibeSeite(Seite const& seite) {
  std::string text = "<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\">\n";
  text += "<title>Bildfahrplan " + html(seite.titel) + "</title>\n<style>" + kStil +
          "</style>\n</head>\n<body>\n<h1>Bildfahrplan " + html(seite.titel) + "</h1>\n";
  text += "<p class=\"filter\">" + html(filterText(seite.filter)) + "</p>\n";
  for (std::string const& h : seite.hinweise)
    text += "<p class=\"hinweis\">" + html(h) + "</p>\n";
  for (std::size_t i = 0; i < seite.graphen.size(); ++i) {
    text += "<section class=\"strecke\"><h2>Strecke " + html(seite.strecken[i]) +
            "</h2>\n<div class=\"graph\">\n" + seite.graphen[i] + "</div></section>\n";
  }
  text += "<section><h2>Züge</h2>\n" + bedienung(seite);
  text +=
      "<table id=\"zuege\"><thead><tr><th data-art=\"zahl\">Nummer</th><th>Gattung</th>"
      "<th>Linie</th><th>Verkehrstage</th><th data-art=\"zahl\">Erster Halt</th>"
      "<th data-art=\"zahl\">Letzter Halt</th><th>Folgezug</th></tr></thead>\n<tbody>\n";
  for (Zugzeile const& z : seite.zuege)
    text += zeile(z);
  text += "</tbody></table></section>\n<script>" + std::string(kSkript) + "</script>\n";
  return text + "</body>\n</html>\n";
}

}  // namespace fplc::graph

// The page of --report FILE.html as a person sees it: the demo's page holds a
// marker for every pin of the design and the charts of every design model,
// whose lines are the model's tables; tables of every form IBIS writes are
// drawn; markup in the inputs stays text. The pages are checked as written
// and, where a headless Chromium is on the machine, as the browser renders
// them.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "ibis/model_reader.h"
#include "report/model_charts.h"
#include "report/pin_map.h"
#include "report/resolution_report.h"
#include "support/test_support.h"

namespace {

using S = std::string;
using Points = std::vector<std::pair<double, double>>;

// What a shell command prints.
S shell(S const& command)
{
    S out;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[65536];
        for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
            out.append(buffer, n);
        pclose(pipe);
    }
    return out;
}

// PAD2IBIS_BROWSER, or the first of Debian's Chromium commands on PATH.
S findBrowser()
{
    char const* browser = std::getenv("PAD2IBIS_BROWSER");
    S const found = browser != nullptr ? browser
                                       : shell("command -v chromium-headless-shell || command -v chromium");
    return found.substr(0, found.find('\n'));
}

// The document as headless Chromium renders it from the file, in a window
// of the size given ("1400,900") or of the browser's own size.
S renderedDom(S const& browser, S const& page, S const& window = "")
{
    ts::TempDir profile;
    return shell("timeout 120 '" + browser +
                 "' --headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
                 "--disable-background-networking --disable-component-update --disable-sync " +
                 (window.empty() ? S() : "--window-size=" + window + " ") +
                 "--user-data-dir=" + profile.path() + " --dump-dom 'file://" + page + "' 2>/dev/null");
}

// Runs pad2ibis with --report page.html on the files, in a new directory;
// the page's path.
S writePage(ts::TempDir const& work, std::vector<std::pair<S, S>> const& files, std::vector<S> args)
{
    for (auto const& file : files)
        ts::writeFile(work.file(file.first), file.second);
    args.insert(args.begin(), {"--report", "page.html"});
    ts::RunResult const run = ts::runLegacy(args, work.path());
    EXPECT_EQ(run.exitCode, 0) << run.out << run.err;
    return work.file("page.html");
}

std::vector<std::smatch> matches(S const& text, std::regex const& pattern)
{
    return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

std::size_t count(S const& text, S const& what)
{
    std::size_t n = 0;
    for (S::size_type at = text.find(what); at != S::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

std::map<S, S> markers(S const& page)
{
    std::map<S, S> outcomes;
    for (auto const& m : matches(page, std::regex("data-pin=\"([^\"]*)\" data-outcome=\"([^\"]*)\"")))
        outcomes[m[1]] = m[2];
    return outcomes;
}

// The lines of a model's chart, read back to values through the plot
// area's bounds, by "class table" ("typ pulldown"); the first of a name.
std::map<S, Points> chartLines(S const& page, S const& model, S const& kind)
{
    std::map<S, Points> lines;
    S::size_type const plot = page.find("<svg class=\"plot\"", page.find("data-model=\"" + model + "\" data-chart=\"" + kind));
    S const area = plot == S::npos ? S() : page.substr(plot, page.find("</svg>", plot) - plot);
    std::smatch bounds;
    if (!std::regex_search(area, bounds, std::regex("data-x=\"(\\S+) (\\S+)\" data-y=\"(\\S+) (\\S+)\"")))
        return lines;
    double const x0 = std::stod(bounds[1]), x1 = std::stod(bounds[2]);
    double const y0 = std::stod(bounds[3]), y1 = std::stod(bounds[4]);
    for (auto const& m : matches(area, std::regex("<polyline class=\"(\\w+)\" stroke=\"[^\"]*\" "
                                                  "data-table=\"([^\"]*)\" points=\"([^\"]*)\""))) {
        Points points;
        std::istringstream in(m[3].str());
        double px = 0, py = 0;
        char comma = 0;
        while (in >> px >> comma >> py)
            points.emplace_back(x0 + px / 1000 * (x1 - x0), y0 + (1000 - py) / 1000 * (y1 - y0));
        lines.emplace(m[1].str() + " " + m[2].str(), points);
    }
    return lines;
}

// Points within a thousandth of the chart's span, as drawn.
void expectPoints(Points const& drawn, Points const& expected, double xSpan, double ySpan)
{
    ASSERT_EQ(drawn.size(), expected.size());
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        EXPECT_NEAR(drawn[i].first, expected[i].first, xSpan / 1000) << "point " << i;
        EXPECT_NEAR(drawn[i].second, expected[i].second, ySpan / 1000) << "point " << i;
    }
}

// A table of a master's model, column by column, as the shared reader reads
// it.
std::vector<Points> masterTable(S const& master, S const& model, S const& table)
{
    std::vector<Points> corners(3);
    std::ifstream in(master, std::ios::binary);
    ibis::readModels(in, [&](ibis::Model const& m) {
        ibis::Section const* section = m.name == model ? m.section(table) : nullptr;
        for (ibis::Row const& row : section ? section->rows : std::vector<ibis::Row>())
            for (int c = 0; c < 3; ++c)
                if (row.cells[0].isValue() && row.cells[c + 1].isValue())
                    corners[c].emplace_back(row.cells[0].value, row.cells[c + 1].value);
    });
    return corners;
}

S const kDemoCurves = "lvc330s080naaaaaaaou";

// The demo's signal table as its expected CSV holds it: signal, pin and
// outcome of each row (none of their fields is quoted).
std::vector<std::smatch> demoSignals()
{
    static S const csv = ts::readFile(ts::sourcePath("tests/report/data/demo_report.csv"));
    static S const table = csv.substr(0, csv.find("\r\n\r\n"));
    return matches(table, std::regex("\n([^,]*),([^,]*),(?:[^,]*,){4}([^,]*),"));
}

void checkDemoPage(S const& page)
{
    // A marker for each signal's pin and for the negative legs of the six
    // differential pairs, with the outcome of the signal.
    std::map<S, S> expected = {{"F5", "resolved"}, {"G4", "resolved"}, {"H3", "resolved"},
                               {"J3", "resolved"}, {"N4", "resolved"}, {"P3", "resolved"}};
    std::vector<S> order[3]; // missing, fallback, the others
    for (std::smatch const& row : demoSignals()) {
        expected[row[2]] = row[3];
        order[row[3] == "missing" ? 0 : row[3] == "fallback" ? 1 : 2].push_back(row[1]);
    }
    ASSERT_EQ(expected.size(), 40u);
    EXPECT_EQ(markers(page), expected);
    EXPECT_EQ(count(page, "data-pin=\""), expected.size());
    EXPECT_EQ(count(page, "data-pair=\""), 6u);
    EXPECT_NE(page.find("data-pair=\"F4 F5\""), S::npos);

    // A chart of I-V tables for each of the 21 design models (the lines of
    // the CSV's second table); waveforms in one of them, the others show
    // their [Ramp] or say they have none.
    S const csv = ts::readFile(ts::sourcePath("tests/report/data/demo_report.csv"));
    S::size_type const models = csv.find("model,signals\r\n");
    ASSERT_EQ(count(csv.substr(models, csv.find("\r\n\r\n", models) - models), "\r\n"), 21u);
    std::set<S> iv, vt;
    for (auto const& m : matches(page, std::regex("<svg class=\"chart\" data-model=\"([^\"]*)\" data-chart=\"(\\w+)\"")))
        (m[2] == "iv" ? iv : vt).insert(m[1]);
    EXPECT_EQ(iv.size(), 21u);
    EXPECT_EQ(vt, std::set<S>{kDemoCurves});
    EXPECT_EQ(count(page, "<svg class=\"chart\""), 22u);
    EXPECT_EQ(count(page, "<article class=\"model\""), 21u);
    EXPECT_EQ(count(page, "[Ramp], no waveforms"), 15u);

    // The curves are the master's tables.
    S const master = ts::sourcePath("examples/kva3_master.ibs");
    auto ivLines = chartLines(page, kDemoCurves, "iv");
    std::vector<Points> const pulldown = masterTable(master, kDemoCurves, "pulldown");
    std::vector<Points> const clamp = masterTable(master, kDemoCurves, "gnd clamp");
    EXPECT_EQ(ivLines.size(), 9u); // pulldown, pullup, GND clamp, three corners each
    expectPoints(ivLines["typ pulldown"], pulldown[0], 10, 0.6);
    expectPoints(ivLines["min pulldown"], pulldown[1], 10, 0.6);
    expectPoints(ivLines["max pulldown"], pulldown[2], 10, 0.6);
    expectPoints(ivLines["max gnd clamp"], clamp[2], 10, 0.6);
    auto vtLines = chartLines(page, kDemoCurves, "vt");
    std::vector<Points> const rising = masterTable(master, kDemoCurves, "rising waveform");
    EXPECT_EQ(rising[0].size(), 41u);
    expectPoints(vtLines["typ rising waveform"], rising[0], 5e-9, 3.5);

    // Missing and fallback signals head the table, in pad report order.
    std::vector<S> rows;
    for (auto const& m : matches(page, std::regex("<tr class=\"o-\\w+\"><td>([^<]*)</td>")))
        rows.push_back(m[1]);
    for (int group : {1, 2})
        order[0].insert(order[0].end(), order[group].begin(), order[group].end());
    EXPECT_EQ(rows, order[0]);
    EXPECT_NE(page.find("data-count=\"fallback\">1<"), S::npos);
}

std::vector<std::pair<S, S>> demoFiles()
{
    return {{"demo.pad", ts::readFile(ts::sourcePath("examples/demo.pad"))}};
}

TEST(ReportPage, DemoPageAsWritten)
{
    ts::TempDir work;
    S const page = ts::readFile(writePage(work, demoFiles(), {"demo.pad", ts::sourcePath("examples/kva3_master.ibs")}));
    checkDemoPage(page);
    // One page, nothing fetched from anywhere.
    EXPECT_EQ(page.find("<script"), S::npos);
    EXPECT_EQ(page.find("src="), S::npos);
    EXPECT_EQ(page.find("href=\"http"), S::npos);
    EXPECT_NE(page.find("content=\"default-src 'none'; style-src 'unsafe-inline'\""), S::npos);
}

// Pad report lines for signals; pin and bank as "A1/0".
S padReport(std::vector<S> const& signals)
{
    S pad = "Pad Report - Corvane Design Suite 2026.2 (build 118)\n\nPART TYPE:   KVA3-40E-6BG256C\n"
            "PACKAGE:     CABGA256\n\nPinout by Port Name:\n"
            "+------+----------+-------------+------+----------------+\n"
            "| Port Name | Pin/Bank | Buffer Type | Site | PIO Properties |\n"
            "+------+----------+-------------+------+----------------+\n";
    for (S const& signal : signals)
        pad += signal + "\n";
    return pad + "+------+----------+-------------+------+----------------+\n";
}

S const kHostileName = "h<b>&'q\".pad";

std::vector<std::pair<S, S>> hostileFiles()
{
    return {{kHostileName,
             padReport({"| <script>alert(1)</script> | A1/0 | LVCMOS33_OUT | PT1A | DRIVE:8mA SLEW:SLOW PULL:NONE |",
                        "| a\"b'c&d | A2/<i> | LVCMOS33_IN | PT2A | PULL:<img src=x onerror=alert(2)> |",
                        "| <img src=x onerror=alert(3)> | A3/0 | LVCMOS33_IN | PT3A | PULL:DOWN |"})},
            {"kx3_master.ibs", ts::readFile(ts::sourcePath("tests/writer/data/kx3_master.ibs"))}};
}

// What the hostile report's page must show: its texts, and no element of
// them.
void checkHostilePage(S const& page)
{
    for (S const markup : {"<script", "<img", "<b>", "<i>", "onerror=alert(2)>"})
        EXPECT_EQ(page.find(markup), S::npos) << markup;
    EXPECT_GE(count(page, "&lt;script&gt;alert(1)&lt;/script&gt;"), 2u); // table and pin title
    EXPECT_GE(count(page, "&lt;img src=x onerror=alert(3)&gt;"), 2u);
    EXPECT_NE(page.find("h&lt;b&gt;&amp;"), S::npos); // the file names
    EXPECT_EQ(markers(page).size(), 3u);
}

TEST(ReportPage, MarkupInTheInputsStaysText)
{
    ts::TempDir work;
    S const page = ts::readFile(writePage(work, hostileFiles(), {kHostileName, "kx3_master.ibs"}));
    checkHostilePage(page);
    // As written, quotes are references too: no attribute ends early.
    EXPECT_NE(page.find("<td>a&quot;b&#39;c&amp;d</td>"), S::npos);
    EXPECT_NE(page.find("<td>&lt;i&gt;</td>"), S::npos); // the bank
    EXPECT_NE(page.find("PULL=&lt;img;<wbr>src=x=;<wbr>onerror=alert(2)&gt;="), S::npos);
}

TEST(ReportPage, InHeadlessChromium)
{
    S const browser = findBrowser();
    if (browser.empty())
        GTEST_SKIP() << "no headless Chromium on this machine (chromium-headless-shell or chromium; "
                        "PAD2IBIS_BROWSER names another): the pages were not rendered";
    ts::TempDir demo, hostile;
    S const demoDom = renderedDom(browser, writePage(demo, demoFiles(),
                                                     {"demo.pad", ts::sourcePath("examples/kva3_master.ibs")}));
    ASSERT_NE(demoDom.find("</html>"), S::npos) << browser << " rendered nothing";
    checkDemoPage(demoDom);
    S const hostileDom = renderedDom(browser, writePage(hostile, hostileFiles(), {kHostileName, "kx3_master.ibs"}));
    ASSERT_NE(hostileDom.find("</html>"), S::npos);
    checkHostilePage(hostileDom);
    EXPECT_NE(hostileDom.find("<td>a\"b'c&amp;d</td>"), S::npos);
}

// Measures the signal table as the browser lays it out, and writes what it
// found into the page: the count of values (cells that hold text) it saw,
// then a line for each fault, by signal and column: the table in a scroll
// box of its own, a value not shown, a cell outside the window or cut by a
// box, a value with neither its column's heading nor a label of its own in
// sight, a page wider than the window.
char const kLayoutProbe[] = R"(<script>
(function () {
  var root = document.documentElement, width = root.clientWidth, faults = [], values = 0;
  var table = document.querySelector('table.signals'), heads = table.tHead.rows[0].cells;
  function shown(e) { return e.getClientRects().length > 0; }
  function clips(e) { var s = getComputedStyle(e); return s.overflowX != 'visible' || s.overflowY != 'visible'; }
  function outside(inner, outer) {
    return inner.left < outer.left - 0.5 || inner.right > outer.right + 0.5 ||
           inner.top < outer.top - 0.5 || inner.bottom > outer.bottom + 0.5;
  }
  function inside(e) { // the box within borders and scroll bars
    var r = e.getBoundingClientRect(), left = r.left + e.clientLeft, top = r.top + e.clientTop;
    return {left: left, right: left + e.clientWidth, top: top, bottom: top + e.clientHeight};
  }
  function inWindow(box) { return box.left >= -0.5 && box.right <= width + 0.5; }
  for (var e = table; e != document.body; e = e.parentElement)
    if (clips(e)) faults.push('the table scrolls in ' + e.tagName + '.' + e.className);
  if (root.scrollWidth > width) faults.push('the page is ' + root.scrollWidth + ' px wide');
  for (var r = 0; r < table.rows.length; ++r)
    for (var c = 0; c < table.rows[r].cells.length; ++c) {
      var cell = table.rows[r].cells[c];
      var where = (r == 0 ? 'heading' : table.rows[r].cells[0].textContent) + ' ' + heads[c].textContent;
      var data = cell.tagName == 'TD', value = data && cell.textContent != '';
      if (!shown(cell)) {
        if (value) faults.push(where + ': not shown');
        continue;
      }
      values += value;
      var box = cell.getBoundingClientRect();
      if (!inWindow(box))
        faults.push(where + ': outside the window at ' + Math.round(box.left) + '..' + Math.round(box.right));
      for (var a = cell.parentElement; a != document.body; a = a.parentElement)
        if (clips(a) && outside(box, inside(a))) faults.push(where + ': cut by ' + a.tagName);
      var text = document.createRange();
      text.selectNodeContents(cell);
      if (cell.scrollWidth > cell.clientWidth || text.getBoundingClientRect().width > 0 &&
          outside(text.getBoundingClientRect(), box))
        faults.push(where + ': its text is cut');
      var headed = shown(heads[c]) && inWindow(heads[c].getBoundingClientRect());
      if (value && !headed && getComputedStyle(cell, '::before').content != '"' + heads[c].textContent + '"')
        faults.push(where + ': no label');
    }
  var out = document.createElement('pre');
  out.id = 'layout';
  out.textContent = 'values ' + values + '\n' + faults.slice(0, 12).join('\n') +
                    (faults.length > 12 ? '\nand ' + (faults.length - 12) + ' more' : '');
  document.body.appendChild(out);
})();
</script>
)";

// What the probe above finds on a page in a window of the size given. The
// page lets no script run; the probe runs in a copy whose policy lets in
// inline scripts.
S signalTableLayout(S const& browser, S const& page, S const& window)
{
    S probed = ts::readFile(page);
    S const policy = "style-src 'unsafe-inline'";
    S::size_type const at = probed.find(policy), end = probed.rfind("</body>");
    if (at == S::npos || end == S::npos)
        return "no policy or no body";
    probed.insert(end, kLayoutProbe);
    probed.insert(at + policy.size(), "; script-src 'unsafe-inline'");
    ts::writeFile(page + ".probed.html", probed);
    S const dom = renderedDom(browser, page + ".probed.html", window);
    S::size_type const from = dom.find("<pre id=\"layout\">"), to = dom.find("</pre>", from);
    return from == S::npos || to == S::npos ? "the probe did not run" : dom.substr(from + 17, to - from - 17);
}

// The signal table scrolls with the page, and every value of it can be read
// both in a wide window and in a narrow one.
TEST(ReportPage, SignalTableFitsTheWindow)
{
    S const browser = findBrowser();
    if (browser.empty())
        GTEST_SKIP() << "no headless Chromium on this machine (chromium-headless-shell or chromium; "
                        "PAD2IBIS_BROWSER names another): the page was not laid out";
    ts::TempDir work;
    S const page = writePage(work, demoFiles(), {"demo.pad", ts::sourcePath("examples/kva3_master.ibs")});
    S const written = ts::readFile(page);
    S::size_type const from = written.find("<table class=\"signals\">");
    ASSERT_NE(from, S::npos);
    S const table = written.substr(from, written.find("</table>", from) - from);
    S const values = "values " + std::to_string(count(table, "<td>") - count(table, "<td></td>")) + "\n";
    EXPECT_EQ(values, "values 304\n"); // 34 rows of 11 cells, 70 of them empty
    for (S const window : {"1400,900", "700,900"})
        EXPECT_EQ(signalTableLayout(browser, page, window), values) << "window " << window;
}

// A master with tables in every form: scale letters and units, "NA" cells,
// a column of "NA" only, a keyword written another way, a waveform of 1000
// rows, a model with no tables and one with [Ramp] alone.
S curvesMaster()
{
    S const base = ts::readFile(ts::sourcePath("tests/writer/data/kx3_master.ibs"));
    S master = base.substr(0, base.find("[Pin]"));
    master += "[Pin]  signal_name  model_name\n"
              "A1     IO_A1        lvc330s080naaaaaaaou\n"
              "A3     IO_A3        lvc330axxxdaaaaaaain\n"
              "H2     IO_H2_p      lvd250fxxxaaaaaaa3ou\n"
              "H3     IO_H2_n      lvd250fxxxaaaaaaa3ou\n"
              "|\n"
              "[Model]  lvc330s080naaaaaaaou\nModel_type 3-state\nC_comp 2p 1p 3p\n"
              "[Pulldown]\n"
              "| V   typ      min     max\n"
              "-1.0  -50mA    -40mA   -60mA\n"
              "0     0        0       0      | a comment\n"
              "1.65  40.0m    NA      50m\n"
              "3.3V  6.0E-02  48mA    NA\n"
              "[gnd_clamp]\n"
              "-3.3  -1.5A  -1.2A  -1.8A\n"
              "0     0      0      0\n"
              "[Rising Waveform]\nR_fixture = 50\nV_fixture = 0\n";
    for (int i = 0; i < 1000; ++i)
        master += std::to_string(i * 10) + "p " + std::to_string(i * 3.3 / 999) + " " +
                  std::to_string(i * 3.0 / 999) + " " + std::to_string(i * 3.5 / 999) + "\n";
    master += "[Falling Waveform]\nR_fixture = 50\nV_fixture = 3.3\n"
              "0     3.3  NA  3.4\n"
              "1n    1.0  NA  0.9\n"
              "2n    0.2  NA  0.1\n"
              "| End [Model] lvc330s080naaaaaaaou\n"
              "[Model]  lvc330axxxdaaaaaaain\nModel_type Input\n"
              "| End [Model] lvc330axxxdaaaaaaain\n"
              "[Model]  lvd250fxxxaaaaaaa3ou\nModel_type 3-state\n"
              "[Ramp]\ndV/dt_r 1.0/0.5n NA NA\ndV/dt_f 1.0/400p 0.9/0.6n 1.1/0.3n\nR_load = 100\n"
              "| End [Model] lvd250fxxxaaaaaaa3ou\n[End]\n";
    return master;
}

TEST(ReportPage, CurvesOfEveryTableForm)
{
    ts::TempDir work;
    S const pad =
        padReport({"| led | A1/0 | LVCMOS33_OUT | PT1A | DRIVE:8mA SLEW:SLOW PULL:NONE |",
                   "| key_n | A3/0 | LVCMOS33_IN | PT3A | PULL:DOWN |",
                   "| tx | H2/6 | LVDS_OUT | PL38A | DIFFDRIVE:3.5 SLEW:FAST |",
                   "| wide | AZ3/6 | LVCMOS33_IN | PL39A | PULL:DOWN |"});
    S const page = ts::readFile(writePage(work, {{"curves.pad", pad}, {"curves.ibs", curvesMaster()}},
                                          {"curves.pad", "curves.ibs"}));
    // The whole page, drawing and all, as the program writes it today.
    EXPECT_EQ(page, ts::readFile(ts::sourcePath("tests/report/data/curves_page.html")));

    auto iv = chartLines(page, "lvc330s080naaaaaaaou", "iv");
    EXPECT_EQ(iv.size(), 6u); // pulldown and GND clamp, three corners each
    expectPoints(iv["typ pulldown"], {{-1, -0.05}, {0, 0}, {1.65, 0.04}, {3.3, 0.06}}, 8, 2.5);
    expectPoints(iv["min pulldown"], {{-1, -0.04}, {0, 0}, {3.3, 0.048}}, 8, 2.5);
    expectPoints(iv["max pulldown"], {{-1, -0.06}, {0, 0}, {1.65, 0.05}}, 8, 2.5);
    expectPoints(iv["max gnd clamp"], {{-3.3, -1.8}, {0, 0}}, 8, 2.5);

    // 1000 rows: 200 points, the first and the last row among them.
    auto vt = chartLines(page, "lvc330s080naaaaaaaou", "vt");
    Points const rising = vt["typ rising waveform"];
    ASSERT_EQ(rising.size(), reportpage::kMaxPoints);
    EXPECT_NEAR(rising.front().second, 0, 0.004);
    EXPECT_NEAR(rising.back().first, 9.99e-9, 1e-11);
    EXPECT_NEAR(rising.back().second, 3.3, 0.004);
    for (std::size_t i = 1; i < rising.size(); ++i)
        EXPECT_LT(rising[i - 1].first, rising[i].first);
    EXPECT_EQ(vt["min falling waveform"].size(), 0u); // its column is "NA" only
    expectPoints(vt["max falling waveform"], {{0, 3.4}, {1e-9, 0.9}, {2e-9, 0.1}}, 1e-8, 4);
    EXPECT_NE(page.find("Rising, R_fixture 50, V_fixture 0</text>"), S::npos);
    EXPECT_NE(page.find("Time (ns)"), S::npos);
    EXPECT_NE(page.find("Current (A)"), S::npos);

    // No tables at all; [Ramp] alone, as written and as a slope.
    S const input = page.substr(page.find("data-model=\"lvc330axxxdaaaaaaain\">"));
    EXPECT_EQ(input.find("<p class=\"none\">No curves:"), input.find("<p class=\"none\">"));
    S const ramp = page.substr(page.find("data-model=\"lvd250fxxxaaaaaaa3ou\">"));
    EXPECT_NE(ramp.find("<td>1.0/0.5n <small>(2 V/ns)</small></td><td>NA</td><td>NA</td>"), S::npos);
    EXPECT_NE(ramp.find("<td>1.0/400p <small>(2.5 V/ns)</small></td>"), S::npos);
    EXPECT_NE(ramp.find("R_load = 100"), S::npos);

    // A name outside the ball grid gets a row of its own; the grid runs from
    // A1 to the furthest row and column (H, 3).
    EXPECT_EQ(markers(page), (std::map<S, S>{{"A1", "resolved"}, {"A3", "resolved"}, {"H2", "resolved"},
                                             {"AZ3", "resolved"}}));
    EXPECT_NE(page.find("<svg class=\"pinmap\" width=\"566\" height=\"254\""), S::npos);
}

TEST(ReportPage, BallGridNames)
{
    struct Case {
        char const* pin;
        int row, column; // -1: no ball-grid name
    } const cases[] = {
        {"A1", 0, 1},   {"T16", 15, 16}, {"Y9", 19, 9},   {"AA1", 20, 1},  {"AB12", 21, 12},
        {"BA3", 40, 3}, {"DY2", 99, 2},  {"EA2", -1, 0},  {"A100", 0, 100}, {"A101", -1, 0},
        {"I1", -1, 0},  {"O2", -1, 0},   {"Q3", -1, 0},   {"S4", -1, 0},   {"X5", -1, 0},
        {"Z6", -1, 0},  {"AI1", -1, 0},  {"A0", -1, 0},   {"A01", -1, 0},  {"a1", -1, 0},
        {"ABC1", -1, 0}, {"A", -1, 0},   {"12", -1, 0},   {"A1B", -1, 0},  {"MIP_1", -1, 0},
        {"", -1, 0},    {"A99999999999", -1, 0},
    };
    for (Case const& c : cases) {
        int row = -7, column = -7;
        bool const grid = reportpage::ballPosition(c.pin, row, column);
        EXPECT_EQ(grid, c.row >= 0) << c.pin;
        if (grid) {
            EXPECT_EQ(row, c.row) << c.pin;
            EXPECT_EQ(column, c.column) << c.pin;
            EXPECT_EQ(reportpage::rowLetters(row) + std::to_string(column), c.pin);
        }
    }
}

TEST(ReportPage, PinMapColouredByPinInductance)
{
    // Five classes from the least to the greatest L_pin; a pin without one
    // is grey; without any value the switch is not there.
    std::vector<SignalOutcome> signals(4);
    char const* const pins[] = {"A1", "A2", "B1", "C3"};
    char const* const inductances[] = {"2nH", "3nH", "", "4.0e-9"};
    for (int i = 0; i < 4; ++i) {
        signals[i].name = "s" + std::to_string(i);
        signals[i].pin = pins[i];
        signals[i].outcome = "resolved";
        if (*inductances[i] != '\0')
            signals[i].values = IbsPinParasitics{"0.1", inductances[i], "0.5pF"};
    }
    signals[1].pairPin = "A3";
    signals[1].pairValues = IbsPinParasitics{"0.1", "2.9nH", "0.5pF"};
    S const page = reportpage::pinMap(signals);
    EXPECT_NE(page.find("<input type=\"radio\" name=\"pin-colour\" id=\"by-inductance\"><label "
                        "for=\"by-inductance\">Colour by pin inductance</label>"),
              S::npos);
    EXPECT_NE(page.find("L_pin 2.00 to 2.40 nH</li>"), S::npos);
    EXPECT_NE(page.find("L_pin 3.60 to 4.00 nH</li>"), S::npos);
    EXPECT_NE(page.find("no L_pin: no [Pin] row, or a pin the package model lacks</li>"), S::npos);
    std::map<S, S> classes;
    std::regex const marker("<g class=\"pin o-resolved b0 (l[0-9x])\" data-pin=\"([A-Z0-9]+)\"");
    for (std::sregex_iterator m(page.begin(), page.end(), marker), end; m != end; ++m)
        classes[(*m)[2]] = (*m)[1];
    EXPECT_EQ(classes, (std::map<S, S>{{"A1", "l0"}, {"A2", "l2"}, {"A3", "l2"}, {"B1", "lx"}, {"C3", "l4"}}));
    EXPECT_NE(page.find("R_pin 0.1, L_pin 2.9nH, C_pin 0.5pF"), S::npos);
    for (SignalOutcome& signal : signals)
        signal.values = signal.pairValues = IbsPinParasitics();
    EXPECT_EQ(reportpage::pinMap(signals).find("inductance"), S::npos);
}

TEST(ReportPage, ThinningAndAxes)
{
    // Thinning spreads the points evenly (the curves above hold the ends).
    std::vector<std::size_t> const kept = reportpage::thinned(1000, 200);
    for (std::size_t i = 1; i < kept.size(); ++i)
        EXPECT_NEAR(static_cast<double>(kept[i] - kept[i - 1]), 999.0 / 199, 1.0);
    EXPECT_EQ(reportpage::thinned(3, 200), (std::vector<std::size_t>{0, 1, 2}));

    struct Case {
        double low, high, axisLow, axisHigh, step;
        int exponent;
    } const cases[] = {
        {-3.3, 6.6, -4, 8, 2, 0},         {-0.0716, 0.072, -0.08, 0.08, 0.02, -3},
        {0, 5e-9, 0, 5e-9, 1e-9, -9},     {2.5, 2.5, 2.2, 2.8, 0.1, 0},
        {0, 0, -1, 1, 0.5, 0},            {-1.8, 0, -2, 0, 0.5, 0},
        {0.0, 3.3e-6, 0, 3.5e-6, 5e-7, -6},
    };
    for (Case const& c : cases) {
        reportpage::Axis const axis = reportpage::niceAxis(c.low, c.high);
        EXPECT_NEAR(axis.low, c.axisLow, c.step * 1e-6) << c.low << " " << c.high;
        EXPECT_NEAR(axis.high, c.axisHigh, c.step * 1e-6) << c.low << " " << c.high;
        EXPECT_NEAR(axis.step, c.step, c.step * 1e-6) << c.low << " " << c.high;
        EXPECT_EQ(axis.exponent, c.exponent) << c.low << " " << c.high;
    }
}

} // namespace

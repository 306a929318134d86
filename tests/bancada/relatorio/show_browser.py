"""Opens the page of `ecf-bancada show --html` in headless Chromium and clicks through it.

Usage: show_browser.py PROGRAM SOURCE_DIR [SCREENSHOT]

With SCREENSHOT the whole page is saved there, in the light and in the dark scheme
(SCREENSHOT-light.png, SCREENSHOT-dark.png). Ends with 77 where there is no browser to drive.
"""
import json
import os
import pathlib
import re
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.by import By
except ImportError:
    print("python3-selenium is not installed")
    sys.exit(77)
CHROMIUM = shutil.which("chromium")
DRIVER = shutil.which("chromedriver")
if not CHROMIUM or not DRIVER:
    print("chromium and chromium-driver are not installed")
    sys.exit(77)

PROGRAM = os.path.abspath(sys.argv[1])
SOURCE = pathlib.Path(sys.argv[2])
SCREENSHOT = sys.argv[3] if len(sys.argv) > 3 else None

LOG = """\
2024-03-15 11:05:40\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'12', Erro:'near \
"id_cupom_adicional": syntax error'
2024-03-15 11:05:40\tUPDATE cupom_fiscal SET texto_suplementar = '</pre><script>\
document.title="taken"</script>' id_cupom_adicional = 'S' WHERE cont_coo = 104
2024-03-15 11:06:00\tLogDatabase: the rows of this command are lost: </b>full
"""


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        folder = pathlib.Path(cls.folder.name)
        db = sqlite3.connect(folder / "registro.db")
        db.executescript("BEGIN;" + (SOURCE / "sqlite/schema.sql").read_text("utf-8") +
                         (SOURCE / "tests/bancada/relatorio/sample.sql").read_text("utf-8") +
                         "COMMIT")
        db.close()
        (folder / "firmware.log").write_text(LOG, "utf-8")
        cls.page = folder / "page.html"
        subprocess.run([PROGRAM, "show", folder / "registro.db", "--html", cls.page, "--log",
                        folder / "firmware.log"], check=True, timeout=60)
        cls.pages = folder / "pages"
        subprocess.run([PROGRAM, "show", folder / "registro.db", "--pages", cls.pages, "--log",
                        folder / "firmware.log"], check=True, timeout=60)

        options = webdriver.ChromeOptions()
        options.binary_location = CHROMIUM
        for argument in ("headless", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run",
                         "disable-background-networking", "disable-component-update",
                         "disable-sync", "disable-dev-shm-usage", "window-size=1200,1000",
                         f"user-data-dir={folder / 'browser'}"):
            options.add_argument("--" + argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        cls.browser = webdriver.Chrome(service=Service(DRIVER), options=options)
        cls.addClassCleanup(cls.browser.quit)

    def setUp(self):
        self.browser.get(self.page.as_uri())

    def one(self, selector):
        found = self.browser.find_elements(By.CSS_SELECTOR, selector)
        self.assertEqual(len(found), 1, selector)
        return found[0]

    def visible(self, element):
        # is_displayed does not see that a closed <details> hides what it holds.
        return self.browser.execute_script("return arguments[0].checkVisibility()", element)

    def strip(self, coo):
        return self.one(f'details.doc[data-coo="{coo}"] pre.bobina')

    def search(self, coo):
        field = self.one("#coo")
        field.clear()
        field.send_keys(coo)
        self.one("#procura button:not([type])").click()

    def test_a_click_unrolls_a_receipt_and_another_rolls_it_up(self):
        summary = self.one('details.doc[data-coo="102"] > summary')
        strip = self.strip(102)
        self.assertFalse(self.visible(strip))
        summary.click()
        self.assertTrue(self.visible(strip))
        self.assertIn("TOTAL R$                                   29,32", strip.text)
        self.assertIn("001 7891000315507 Leite integral longa vida 1", strip.text)
        summary.click()
        self.assertFalse(self.visible(strip))

    def test_the_first_day_is_open_and_the_others_open_with_a_click(self):
        self.assertTrue(self.one('details.dia[data-crz="1"]').get_attribute("open"))
        second = self.one('details.dia[data-crz="2"]')
        self.assertIsNone(second.get_attribute("open"))
        self.one('details.dia[data-crz="2"] > summary').click()
        self.assertTrue(second.get_attribute("open"))

    def test_search_opens_the_day_and_the_document(self):
        self.search("000113")
        self.assertTrue(self.visible(self.strip(113)))
        self.assertEqual(self.one("#achado").text, "")
        self.search("999")
        self.assertEqual(self.one("#achado").text, "No document has this number.")

    def test_search_finds_what_a_rejected_statement_lost(self):
        self.search("104")
        self.assertEqual(self.one("#achado").text,
                         "A rejected statement has it: see what was lost.")
        self.assertTrue(self.visible(self.strip(104)))
        found = self.one(".perdido.achado")
        self.assertIn("WHERE cont_coo = 104", found.text)
        self.search("105")
        self.assertEqual(self.browser.find_elements(By.CSS_SELECTOR, ".perdido.achado"), [])

    def test_search_of_a_number_that_is_lost_altogether(self):
        text = self.page.read_text("utf-8")
        self.assertEqual(text.count('<div class="perdido" data-coo="104">'), 1)
        lost = self.page.with_name("lost.html")
        lost.write_text(text.replace('<div class="perdido" data-coo="104">',
                                     '<div class="perdido" data-coo="888">'), "utf-8")
        self.browser.get(lost.as_uri())
        self.search("000888")
        self.assertEqual(self.one("#achado").text, "No document has this number. "
                         "A rejected statement has it: see what was lost.")
        found = self.one(".perdido.achado")
        self.assertGreaterEqual(found.rect["y"] + 1, self.browser.execute_script(
            "return scrollY"))

    def test_the_page_carries_the_verdict_where_the_figures_stand(self):
        checked = subprocess.run(
            [PROGRAM, "check", self.page.with_name("registro.db"), "--json", "--log",
             self.page.with_name("firmware.log")], capture_output=True, check=False, timeout=60)
        summary = json.loads(checked.stdout)["summary"]
        looked_at = json.loads(checked.stdout)["looked_at"]
        self.assertGreater(summary["findings"], 1)
        section = self.one("#check").text
        self.assertIn(f"check found {summary['findings']} findings, "
                      f"{summary['findings'] - summary['explained']} of them", section)
        self.assertIn(looked_at["sha256"], section)
        self.assertIn("registro.db", section)
        self.assertRegex(section, r"Made with ecf-bancada \d+\.\d+")
        self.assertIn("COO 101 of 2024-03-15 08:00:05 to COO 113", section)
        listed = self.browser.find_elements(By.CSS_SELECTOR, "ul.achados li")
        self.assertEqual(len(listed), summary["findings"] + summary["notes"])
        boxes = {box.text.split("\n")[1]: box.text.split("\n")[0] for box in
                 self.browser.find_elements(By.CSS_SELECTOR, ".numeros div")}
        self.assertEqual(boxes["findings of check"], str(summary["findings"]))
        findings = [finding for finding in json.loads(checked.stdout)["findings"]
                    if finding["weight"] == "finding"]
        for name, kind in (("coo", "doc"), ("crz", "dia")):
            numbers = {finding[name] for finding in findings}
            marked = 0
            for number in numbers - {0}:
                count = len([finding for finding in findings if finding[name] == number])
                for mark in self.browser.find_elements(
                        By.CSS_SELECTOR,
                        f'details.{kind}[data-{name}="{number}"] > summary > .achados'):
                    self.assertEqual(mark.get_attribute("textContent"),
                                     f"{count} finding" + ("s" if count != 1 else ""))
                    marked += 1
            self.assertEqual(marked, len(self.browser.find_elements(
                By.CSS_SELECTOR, f"details.{kind} > summary > .achados")))
            self.assertGreater(marked, 0)

    def test_search_does_not_take_what_is_typed_for_a_selector(self):
        self.search('1"],*["')
        self.assertEqual(self.browser.title, "Mercearia Bom Preço")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, ".achado")), 0)

    def test_open_all_and_close_all(self):
        days = self.browser.find_elements(By.CSS_SELECTOR, "details.dia")
        self.assertEqual(len(days), 2)
        self.one("#abre").click()
        self.assertTrue(all(day.get_attribute("open") for day in days))
        self.one("#fecha").click()
        self.assertFalse(any(day.get_attribute("open") for day in days))

    def test_links_lead_to_their_sections(self):
        for link in self.browser.find_elements(By.CSS_SELECTOR, "nav a"):
            target = link.get_attribute("href").split("#")[1]
            with self.subTest(target=target):
                link.click()
                self.assertEqual(self.browser.current_url, self.page.as_uri() + "#" + target)
                self.one("section#" + target)

    def test_plots_are_drawn_to_their_amounts(self):
        bars = self.browser.find_elements(By.CSS_SELECTOR, "#hours .largo .barra")
        self.assertEqual(len(bars), 4)
        heights = [bar.rect["height"] for bar in bars]
        # 08 h 5.00, 09 h 29.32, 11 h an unclosed receipt, 17 h 1240.00 of an axis to 1500.
        self.assertEqual(max(heights), heights[3])
        self.assertGreater(heights[3], 50)
        self.assertLess(heights[2], 1)
        widths = [bar.rect["width"] for bar in
                  self.browser.find_elements(By.CSS_SELECTOR, "#means .largo .barra")]
        self.assertEqual(len(widths), 3)
        self.assertAlmostEqual(widths[1] / widths[0], 0.24, delta=0.01)
        labels = [text.text for text in
                  self.browser.find_elements(By.CSS_SELECTOR, "#means .largo text")]
        self.assertEqual(labels, ["Cartão de crédito", "1.000,00", "Cheque", "240,00", "Dinheiro",
                                  "67,10"])

    def test_figures_open_with_a_click(self):
        table = self.one("#hours table")
        self.assertFalse(self.visible(table))
        self.one("#hours details > summary").click()
        self.assertTrue(self.visible(table))
        self.assertIn("17 h 1 1.240,00", table.text)

    def test_losses_are_shown(self):
        rejected, lost = self.browser.find_elements(By.CSS_SELECTOR, "#lost .perdido")
        self.assertIn('near "id_cupom_adicional": syntax error', rejected.text)
        self.assertIn("</pre><script>document.title=\"taken\"</script>", rejected.text)
        self.assertEqual(lost.text, "15/03/2024 11:06:00 command lost, log line 3: </b>full")

    def test_no_text_of_the_database_becomes_markup(self):
        self.search("113")
        self.assertEqual(self.browser.title, "Mercearia Bom Preço")
        self.assertIn('</pre><script>document.title="taken"</script>', self.strip(113).text)
        scripts = self.browser.find_elements(By.TAG_NAME, "script")
        self.assertEqual(len(scripts), 1)
        self.assertEqual(len(self.browser.find_elements(By.TAG_NAME, "img")), 0)

    def test_the_policy_stops_a_script_that_got_in(self):
        text = self.page.read_text("utf-8")
        broken = self.page.with_name("broken.html")
        broken.write_text(text.replace("</main>", '<script>document.title="taken"</script>'
                                       '<img src="x" onerror="document.title=\'taken\'"></main>'),
                          "utf-8")
        self.browser.get(broken.as_uri())
        self.assertEqual(len(self.browser.find_elements(By.TAG_NAME, "script")), 2)
        self.assertEqual(self.browser.title, "Mercearia Bom Preço")
        self.browser.get_log("browser")

    def test_the_browser_has_nothing_to_say(self):
        self.browser.get_log("browser")
        self.browser.get(self.page.as_uri())
        self.search("102")
        self.assertEqual(self.browser.get_log("browser"), [])

    def test_nothing_is_wider_than_a_telephone(self):
        self.one("#abre").click()
        for summary in self.browser.find_elements(By.CSS_SELECTOR, "details.doc > summary"):
            summary.click()
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": 390, "height": 800, "deviceScaleFactor": 1, "mobile": True})
        try:
            self.assertLessEqual(self.browser.execute_script(
                "return document.documentElement.scrollWidth"), 390)
            cut = self.browser.execute_script(
                "return [...document.querySelectorAll('pre.bobina')]"
                ".filter(p => p.scrollWidth > p.clientWidth).length")
            self.assertEqual(cut, 0)
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})

    def test_a_telephone_shows_times_marks_and_plots(self):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": 390, "height": 800, "deviceScaleFactor": 1, "mobile": True})
        try:
            self.one("#abre").click()
            marks = [mark for mark in self.browser.find_elements(
                By.CSS_SELECTOR, ".doc > summary > .marca:not(.achados)")
                     if mark.get_attribute("textContent")]
            self.assertEqual({mark.text for mark in marks}, {"CANCELADO", "no closing"})
            hours = self.browser.find_elements(By.CSS_SELECTOR, ".doc > summary > .hora")
            self.assertTrue(all(re.fullmatch(r"\d\d/\d\d/\d{4} \d\d:\d\d:\d\d", hour.text)
                                for hour in hours))
            # Nothing is cut, nothing lies on another, and every text has a size to be read.
            faults = self.browser.execute_script("""
                const faults = [];
                for (const summary of document.querySelectorAll('.doc > summary')) {
                    const parts = [...summary.children].filter(p => p.textContent);
                    for (const p of parts) {
                        const a = p.getBoundingClientRect();
                        if (a.right > 390 || a.left < 0 || p.scrollWidth > p.clientWidth + 1
                            || parseFloat(getComputedStyle(p).fontSize) < 12)
                            faults.push(p.textContent + ' is cut or small');
                        for (const q of parts) {
                            const b = q.getBoundingClientRect();
                            if (p !== q && a.left < b.right - 1 && b.left < a.right - 1
                                && a.top < b.bottom - 1 && b.top < a.bottom - 1)
                                faults.push(p.textContent + ' lies on ' + q.textContent);
                        }
                    }
                }
                for (const svg of document.querySelectorAll('svg')) {
                    if (!svg.checkVisibility()) continue;
                    const box = svg.getBoundingClientRect();
                    if (box.right > 390 || box.left < 0) faults.push('a plot is too wide');
                    for (const text of svg.querySelectorAll('text')) {
                        const t = text.getBoundingClientRect();
                        if (t.left < box.left - 1 || t.right > box.right + 1)
                            faults.push(text.textContent + ' leaves its plot');
                        if (parseFloat(getComputedStyle(text).fontSize) *
                            box.width / svg.viewBox.baseVal.width < 9.5)
                            faults.push(text.textContent + ' is too small');
                    }
                }
                return faults;""")
            self.assertEqual(faults, [])
            self.assertTrue(self.visible(self.one("#hours svg.estreito")))
            self.assertFalse(self.visible(self.one("#hours svg.largo")))
            self.assertEqual(len(self.browser.find_elements(
                By.CSS_SELECTOR, "#hours .estreito .barra")), 4)
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})

    def test_the_overview_leads_to_the_pages_of_days_and_back(self):
        for width in (1200, 390):
            self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
                "width": width, "height": 800, "deviceScaleFactor": 1, "mobile": width < 640})
            try:
                self.browser.get_log("browser")
                self.browser.get((self.pages / "index.html").as_uri())
                self.assertIn("What was looked at, and what check says", self.one("#check").text)
                self.assertIn("2024-03", self.one("#months").text)
                self.fits(width)
                self.one('#days a[href="dia-00002.html"]').click()
                self.assertIn("Z 0002", self.one("h1").text)
                self.fits(width)
                self.browser.find_element(By.LINK_TEXT, "Page before").click()
                self.assertIn("Z 0001, 15/03/2024", self.one("h1").text)
                self.browser.find_element(By.LINK_TEXT, "Next page").click()
                self.browser.find_element(By.LINK_TEXT, "Overview").click()
                self.search("000113")
                self.assertTrue(self.browser.current_url.endswith("dia-00002.html#coo-113"))
                self.assertTrue(self.visible(self.strip(113)))
                self.browser.get((self.pages / "index.html").as_uri())
                self.search("999")
                self.assertEqual(self.one("#achado").text, "No day has this number.")
                self.assertEqual(self.browser.get_log("browser"), [])
            finally:
                self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})

    def test_a_year_is_an_overview_that_is_there_at_once(self):
        days = 365
        folder = pathlib.Path(self.folder.name)
        tape = subprocess.run([PROGRAM, "generate", "--days", str(days), "--receipts", "2", "--seed",
                               "1"], check=True, stdout=subprocess.PIPE, timeout=60).stdout
        (folder / "year.jsonl").write_bytes(tape)
        subprocess.run([PROGRAM, "run", folder / "year.jsonl", "--db", folder / "year.db"],
                       check=True, stdout=subprocess.DEVNULL, timeout=200)
        subprocess.run([PROGRAM, "show", folder / "year.db", "--pages", folder / "year"],
                       check=True, timeout=200)
        pages = sorted((folder / "year").iterdir())
        self.assertEqual(len(pages), days + 1)
        self.assertLess(max(page.stat().st_size for page in pages), 2_000_000)
        times = {"index.html": [], "dia-00002.html": []}
        for _ in range(5):  # in turns: the machine has other things to do
            for name, took in times.items():
                self.browser.get((folder / "year" / name).as_uri())
                took.append(self.browser.execute_script(
                    "document.body.scrollHeight;"
                    "return performance.getEntriesByType('navigation')[0].domComplete"))
        self.browser.get((folder / "year" / "index.html").as_uri())
        elements = self.browser.execute_script("return document.getElementsByTagName('*').length")
        self.assertGreater(elements, 4 * days)
        self.assertLess(elements, 12 * days + 300)
        index, day = (sorted(took)[2] for took in times.values())
        self.assertGreater(day, 0)
        self.assertLess(index / day, 12, times)

    def fits(self, width):
        self.assertLessEqual(self.browser.execute_script(
            "return document.documentElement.scrollWidth"), width)

    def test_the_pages_of_a_folder_print_without_their_tools(self):
        self.browser.get((self.pages / "dia-00001.html").as_uri())
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        try:
            self.assertFalse(self.visible(self.one("nav")))
            self.assertFalse(self.visible(self.one("#procura")))
            self.assertTrue(self.visible(self.one('details.doc[data-coo="102"] > summary')))
        finally:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})

    def contrast(self, selector):
        """Of an element's text to the first background behind it that is not transparent."""
        def luminance(colour):
            parts = [int(part) / 255 for part in re.findall(r"\d+", colour)[:3]]
            linear = [p / 12.92 if p <= 0.04045 else ((p + 0.055) / 1.055) ** 2.4 for p in parts]
            return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]

        text, background = self.browser.execute_script("""
            let e = document.querySelector(arguments[0]);
            const text = getComputedStyle(e).color;
            while (getComputedStyle(e).backgroundColor === 'rgba(0, 0, 0, 0)') e = e.parentElement;
            return [text, getComputedStyle(e).backgroundColor];""", selector)
        high, low = sorted((luminance(text), luminance(background)), reverse=True)
        return (high + 0.05) / (low + 0.05)

    def test_light_and_dark_are_readable(self):
        self.search("102")
        background = []
        for scheme in ("light", "dark"):
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
                "features": [{"name": "prefers-color-scheme", "value": scheme}]})
            background.append(self.browser.execute_script(
                "return getComputedStyle(document.body).backgroundColor"))
            for selector in ("h1", ".fraco", "nav a", ".numeros span", ".doc > summary", ".marca",
                             ".achado > summary", "pre.bobina", ".perdido pre", "button"):
                with self.subTest(scheme=scheme, selector=selector):
                    self.assertGreaterEqual(self.contrast(selector), 4.5)
            if SCREENSHOT:
                self.browser.execute_script("scrollTo(0, 0)")
                height = self.browser.execute_script("return document.documentElement.scrollHeight")
                self.browser.set_window_size(1200, height + 150)
                self.browser.save_screenshot(f"{SCREENSHOT}-{scheme}.png")
                self.browser.set_window_size(1200, 1000)
        self.assertNotEqual(background[0], background[1])
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": []})

    def selectors(self):
        """Of the page's style, without what only a pointer, the keyboard or an opening makes."""
        selectors = self.browser.execute_script("""
            const all = [];
            const read = (rules) => { for (const rule of rules)
                if (rule.selectorText) all.push(...rule.selectorText.split(/,\\s*/));
                else read(rule.cssRules); };
            for (const sheet of document.styleSheets) read(sheet.cssRules);
            return all;""")
        return {re.sub(r":(hover|focus-visible)|::[a-z-]+|\[open\]", "", selector)
                for selector in selectors} - {":root", "*"}

    def test_every_rule_has_its_element_and_every_class_its_rule(self):
        unused = None
        used = set()
        self.search("102")
        for page in (self.page, self.pages / "index.html", self.pages / "dia-00001.html"):
            if page != self.page:
                self.browser.get(page.as_uri())
            selectors = self.selectors()
            self.assertGreater(len(selectors), 40)
            without = {selector for selector in selectors if not
                       self.browser.find_elements(By.CSS_SELECTOR, selector)}
            unused = without if unused is None else unused & without
            used |= set(self.browser.execute_script("""
                return [...document.querySelectorAll('[class]')].flatMap(e => [...e.classList])"""))
        # Only the search of a number that stands in nothing but a rejected statement makes it.
        self.assertEqual(unused, {".perdido.achado"})
        ruled = {name for selector in selectors for name in re.findall(r"\.([a-z]+)", selector)}
        self.assertEqual(used - ruled, set())

    def test_the_page_stands_in_the_middle_and_its_documents_under_their_day(self):
        def places():
            self.one("#abre").click()
            return self.browser.execute_script("""
                const rect = (selector) =>
                    document.querySelector(selector).getBoundingClientRect();
                const middle = (r) => r.left + r.right - document.documentElement.clientWidth;
                return {body: [rect('body').left, rect('body').top + scrollY],
                        middle: ['header', 'main'].map((selector) => middle(rect(selector))),
                        main: rect('main').width,
                        indent: rect('.doc').left - rect('.dia').left}""")

        wide = places()
        self.assertEqual(wide["body"], [0, 0])
        self.assertEqual(wide["main"], 1080)
        self.assertEqual(wide["indent"], 18)
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": 390, "height": 800, "deviceScaleFactor": 1, "mobile": True})
        try:
            self.browser.get(self.page.as_uri())
            narrow = places()
            self.assertEqual(narrow["body"], [0, 0])
            self.assertEqual(narrow["main"], 390)
            self.assertEqual(narrow["indent"], 0)
        finally:
            self.browser.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})
        for place in wide["middle"] + narrow["middle"]:
            self.assertAlmostEqual(place, 0, delta=1)

    def test_print_leaves_the_tools_out(self):
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        try:
            self.assertFalse(self.visible(self.one("nav")))
            self.assertFalse(self.visible(self.one("#procura")))
            self.assertTrue(self.visible(self.one("#hours svg.largo")))
        finally:
            self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])

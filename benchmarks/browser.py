#!/usr/bin/env python3
"""How large the pages of `ecf-bancada show --pages` are in the browser, and how long they take to load,
as a Markdown table.

  browser.py PROGRAM DATABASE [DATABASE...] [--rounds N] [--hold]

Of each database the one page of all (`--html`), the overview of the folder and its largest page are
opened in headless Chromium, in turns: bytes, elements of the document, and the time until the page is
loaded and laid out, as a ratio to the one page of the first database; the median of the rounds. With
--hold it ends with 1 where a page of a folder has more than 2 MB or an overview takes a second. Ends with
77 where there is no browser to drive.
"""
import argparse
import shutil
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
except ImportError:
    print("python3-selenium is not installed")
    sys.exit(77)

MOST_BYTES = 2_000_000
FIRST_MS = 1000
# From the request until the layout is done, which the question for a height waits for.
MEASURE = """
const before = document.body.scrollHeight;
const entry = performance.getEntriesByType('navigation')[0];
return [Math.max(entry.loadEventEnd, entry.domComplete),
        document.getElementsByTagName('*').length, before];
"""


def browser():
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--window-size=1200,900"):
        options.add_argument(argument)
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=Path)
    parser.add_argument("databases", type=Path, nargs="+")
    parser.add_argument("--rounds", type=int, default=9)
    parser.add_argument("--hold", action="store_true")
    options = parser.parse_args()
    if not shutil.which("chromium") or not shutil.which("chromedriver"):
        print("chromium and chromium-driver are not installed")
        return 77
    faults = []
    with tempfile.TemporaryDirectory() as name:
        pages = []  # what is opened: a name, its file
        for number, database in enumerate(options.databases):
            folder = Path(name, str(number))
            subprocess.run([options.program, "show", database, "--pages", folder], check=True,
                           stdout=subprocess.DEVNULL)
            files = sorted(folder.iterdir(), key=lambda page: page.stat().st_size)
            days = [page for page in files if page.name != "index.html"]
            faults += [f"{page} has {page.stat().st_size} bytes" for page in files
                       if page.stat().st_size > MOST_BYTES]
            whole = Path(name, f"{number}.html")
            subprocess.run([options.program, "show", database, "--html", whole], check=True,
                           stdout=subprocess.DEVNULL)
            pages.append((f"{database.stem}, all on one page", whole))
            pages.append((f"{database.stem}, overview of {len(days)} pages", folder / "index.html"))
            pages.append((f"{database.stem}, largest of the folder", days[-1]))
        driver = browser()
        try:
            times = [[] for _ in pages]
            elements = [0] * len(pages)
            for one in range(options.rounds + 1):
                for place, (_, file) in enumerate(pages):
                    driver.get(file.as_uri())
                    took, elements[place], _ = driver.execute_script(MEASURE)
                    if one > 0:  # the first round begins the browser's parts
                        times[place].append(took)
        finally:
            driver.quit()
        print("| page | bytes | elements | loading, times the first | below a second |")
        print("|---|---:|---:|---:|---|")
        least = statistics.median(times[0])
        for place, (what, file) in enumerate(pages):
            took = statistics.median(times[place])
            print(f"| {what} | {file.stat().st_size:,} | {elements[place]:,} | {took / least:.1f} "
                  f"| {'yes' if took < FIRST_MS else 'no'} |")
            if "overview" in what and took >= FIRST_MS:
                faults.append(f"{what} took {took / least:.1f} times the first, a second or more")
    for fault in faults:
        print(fault)
    return 1 if options.hold and faults else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/python3
"""Measures what a key typed into the manual takes, in a headless Chromium.

    bench/manual.py ZAV ZAV_MAKE_DATABASE MARKDOWN_FILE

Writes the figures.
"""

import os
import statistics
import subprocess
import sys
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

TURNS = 50

KEY = """
const field = document.querySelector("input[type=search]");
field.value = arguments[0];
const start = performance.now();
field.dispatchEvent(new Event("input", { bubbles: true }));
const filtered = performance.now();
document.body.getBoundingClientRect();
return [filtered - start, performance.now() - filtered];
"""


def main():
    zav, make, page = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        file = os.path.join(folder, "faults.db")
        manual = os.path.join(folder, "manual.html")
        subprocess.run([make, file, "1000", "indexed"], check=True)
        languages = [word for number in "123" for word in ("--language", number)]
        with open(manual, "w", encoding="utf-8") as output:
            subprocess.run([zav, "html", file, *languages], check=True, stdout=output)
        size = os.path.getsize(manual)
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage"):
            options.add_argument(argument)
        driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        try:
            driver.get("file://" + manual)
            # Words of which more and more, and then fewer, faults have all.
            words = ["d", "dr", "dri", "drive 17", ""]
            times = [driver.execute_script(KEY, words[turn % len(words)]) for turn in range(TURNS)]
        finally:
            driver.quit()
    filtering, layout = [statistics.median(values) for values in zip(*times)]
    lines = [
        "| 1,000 fault types × 3 languages | |",
        "| --- | ---: |",
        f"| size of the page | {size / 2**20:.2f} MiB |",
        f"| a key: looking at all faults | {filtering:.1f} ms |",
        f"| a key: the browser's layout after it | {layout:.1f} ms |",
    ]
    with open(page, "w", encoding="utf-8") as output:
        output.write("\n".join(lines) + "\n")
    print("\n".join(lines))


main()

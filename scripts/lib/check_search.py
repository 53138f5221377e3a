#!/usr/bin/env python3
"""Types a word into the search box of a site in a browser that has it open from a file:// address, and looks whether
the results name the class. Usage: check_search.py FOLDER WORD"""

import pathlib
import shutil
import subprocess
import sys
import tempfile

# The results are a frame of their own. The browser is told to let a page read such a frame; without that it shows them
# all the same.
SCRIPT = """<script>
const waiting = setInterval(function () {
  const field = document.getElementById("MSearchField");
  if (!field) {
    return; // the page is not set up yet
  }
  clearInterval(waiting);
  field.focus();
  field.value = "WORD";
  field.dispatchEvent(new Event("keyup"));
  document.getElementById("MSearchResults").onload = function () {
    const shown = Array.from(this.contentDocument.querySelectorAll(".SRResult"))
      .filter(result => result.style.display == "block").map(result => result.textContent.trim());
    document.body.dataset.found = shown.join(" | ");
  };
}, 100);
</script></body>"""


def main():
    site, word = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    page = site / "check_search.html"
    index = (site / "index.html").read_text(encoding="utf-8")
    page.write_text(index.replace("</body>", SCRIPT.replace("WORD", word)), encoding="utf-8")
    try:
        with tempfile.TemporaryDirectory() as profile:
            dom = subprocess.run(
                [shutil.which("chromium"), "--headless", "--no-sandbox", "--disable-gpu", f"--user-data-dir={profile}",
                 "--allow-file-access-from-files", "--virtual-time-budget=10000", "--dump-dom", page.as_uri()],
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, timeout=120).stdout
    finally:
        page.unlink()
    found = dom.partition(' data-found="')[2].partition('"')[0]
    if word not in found:
        sys.exit(f"the search for {word} shows: {found or 'nothing'}")
    print(f"search: {word} is found from a file:// address")


main()

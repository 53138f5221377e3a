#!/usr/bin/env python3
"""Finds links and pictures of a site that lead nowhere. Usage: check_site.py FOLDER"""

import html.parser
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.links = set(), set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (name == "name" and tag == "a"):
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.links.add(value)


def main():
    site = pathlib.Path(sys.argv[1]).resolve()
    pages = {path: Page(path.read_text(encoding="utf-8")) for path in site.rglob("*.html")}
    dead, count = [], 0
    for path, page in sorted(pages.items()):
        for link in sorted(page.links):
            url = urllib.parse.urlsplit(link)
            if url.scheme or url.netloc:
                continue  # outside, or a script
            count += 1
            target = (path.parent / urllib.parse.unquote(url.path)).resolve() if url.path else path
            if not target.is_file():
                dead.append(f"{path.name}: {link}")
            elif path.name.startswith("functions") or path.name.endswith("-members.html"):
                continue  # Doxygen's own indexes: they name friends, which the page of the class does not describe
            elif url.fragment and target in pages and url.fragment not in pages[target].anchors:
                dead.append(f"{path.name}: no {link}")
    print(f"{len(pages)} pages, {count} links")
    if dead or not count:
        sys.exit("\n".join(dead) or "no links: is this the site?")


main()

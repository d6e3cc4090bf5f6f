#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Checks built pages: that every link and picture leads somewhere, that every page is reached, and that nothing is
fetched from elsewhere.

    check_pages.py FOLDER     FOLDER/index.html is the first page
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse

LOADED = {"img": ("src", "srcset"), "source": ("src", "srcset"), "script": ("src",), "link": ("href",),
          "iframe": ("src",), "object": ("data",), "image": ("href",), "use": ("href",)}


class Page(html.parser.HTMLParser):
    """What a page refers to, and which places it has."""

    def __init__(self, path):
        super().__init__()
        self.path = path
        self.places = set()
        self.links = []  # addresses that a reader may follow
        self.loaded = []  # addresses that the browser fetches by itself
        self.unnamed_pictures = 0
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        self.places.update(attributes[name] for name in ("id", "name") if attributes.get(name))
        if tag == "a" and attributes.get("href"):
            self.links.append(attributes["href"])
        for name in LOADED.get(tag, ()):
            if attributes.get(name):
                self.loaded.append(attributes[name].split()[0])
        if tag == "img" and not attributes.get("alt"):
            self.unnamed_pictures += 1


def style_addresses(path):
    return re.findall(r"""(?:url\(|@import\s)\s*["']?([^"')]+)""", path.read_text(encoding="utf-8"))


class Check:
    def __init__(self, folder):
        self.folder = folder.resolve()
        self.pages = {path.resolve(): Page(path) for path in sorted(folder.rglob("*.html"))}
        self.used = set()
        self.problems = []

    def complain(self, path, text):
        self.problems.append(f"{path.relative_to(self.folder)}: {text}")

    def resolve(self, path, address):
        """The file that an address of ours means; None where it is missing."""
        target = (path.parent / urllib.parse.unquote(urllib.parse.urlsplit(address).path)).resolve()
        if not target.is_file() or self.folder not in target.parents:
            self.complain(path, f"leads nowhere: {address}")
            return None
        self.used.add(target)
        return target

    def check_loaded(self, path, address):
        if urllib.parse.urlsplit(address).scheme == "data":
            return
        if urllib.parse.urlsplit(address).scheme or address.startswith("/"):
            self.complain(path, f"is fetched from elsewhere: {address}")
            return
        target = self.resolve(path, address)
        if target is not None and target.suffix in (".css", ".svg"):
            for inner in style_addresses(target):
                if not inner.startswith("#"):
                    self.check_loaded(target, inner)

    def check_link(self, path, address):
        parts = urllib.parse.urlsplit(address)
        if parts.scheme in ("http", "https", "mailto"):
            return
        target = self.resolve(path, address) if parts.path else path
        if target is not None and parts.fragment and parts.fragment not in self.pages[target].places:
            self.complain(path, f"no such place: {address}")

    def run(self):
        index = self.folder / "index.html"
        if index not in self.pages:
            return [f"{index} is missing"]
        self.used.add(index)
        for path, page in self.pages.items():
            path = path.resolve()
            for address in page.loaded:
                self.check_loaded(path, address)
            for address in page.links:
                self.check_link(path, address)
            if page.unnamed_pictures:
                self.complain(path, f"{page.unnamed_pictures} pictures without a text in their place")
        for path in sorted(self.pages.keys() - self.used):
            self.complain(path, "no page leads here")
        for path in sorted(self.folder.glob("_images/*")):
            if path not in self.used:
                self.complain(path, "no page shows this")
        return self.problems


def main():
    check = Check(pathlib.Path(sys.argv[1]))
    problems = check.run()
    for problem in problems:
        print(problem)
    pictures = sum(address.endswith((".png", ".svg")) for page in check.pages.values() for address in page.loaded)
    links = sum(len(page.links) for page in check.pages.values())
    print(f"{len(check.pages)} pages, {links} links, {pictures} pictures: {len(problems)} problems")
    sys.exit(1 if problems or not pictures or not links else 0)


if __name__ == "__main__":
    main()

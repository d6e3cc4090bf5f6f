#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Reads a manual in headless Chromium, page by page along its links, in the light and in the dark skin.

    docs/walk_manual.py URL FOLDER     URL is the first page; a picture of every page goes to FOLDER

Ends with status 1 when a page or anything on it fails to load, is fetched from anywhere but the manual's own folder,
reports an error, or has a picture that is not shown. Every picture must be seen in one of the skins.
"""

import base64
import fcntl
import itertools
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import urllib.parse

CHROMIUM = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            "--hide-scrollbars", "--remote-debugging-pipe"]
WIDTH, HEIGHT = 1180, 900
PAGE_FACTS = """({
    links: [...document.querySelectorAll('a[href]')].map(link => link.href),
    pictures: [...document.images].map(picture => ({
        address: picture.src, loaded: picture.complete && picture.naturalWidth > 0,
        seen: picture.getClientRects().length > 0 && picture.clientWidth > 0})),
    tooWide: document.documentElement.scrollWidth > document.documentElement.clientWidth,
    height: document.documentElement.scrollHeight,
    ground: getComputedStyle(document.body).backgroundColor,
})"""


class Browser:
    """Chromium, told what to do through a pair of pipes."""

    def __init__(self, profile):
        to_read, self.to_browser = os.pipe()
        self.from_browser, to_write = os.pipe()

        def as_three_and_four():
            # Out of the way first: either may have the other's number.
            reading, writing = (fcntl.fcntl(end, fcntl.F_DUPFD, 10) for end in (to_read, to_write))
            os.dup2(reading, 3)
            os.dup2(writing, 4)

        self.process = subprocess.Popen(CHROMIUM + [f"--user-data-dir={profile}", "about:blank"],
                                        close_fds=False, preexec_fn=as_three_and_four, stderr=subprocess.DEVNULL)
        os.close(to_read)
        os.close(to_write)
        self.numbers = itertools.count(1)
        self.rest = b""
        self.events = []
        self.session = None
        target = self.do("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.do("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime", "Log"):
            self.do(f"{domain}.enable")

    def read(self):
        while b"\0" not in self.rest:
            piece = os.read(self.from_browser, 1 << 20)
            if not piece:
                raise RuntimeError("Chromium has ended")
            self.rest += piece
        message, self.rest = self.rest.split(b"\0", 1)
        return json.loads(message)

    def do(self, method, **parameters):
        number = next(self.numbers)
        message = {"id": number, "method": method, "params": parameters}
        if self.session:
            message["sessionId"] = self.session
        os.write(self.to_browser, json.dumps(message).encode() + b"\0")
        while True:
            answer = self.read()
            if answer.get("id") == number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer["result"]
            self.events.append(answer)

    def wait_for(self, method):
        for event in self.events:
            if event.get("method") == method:
                return
        while True:
            event = self.read()
            self.events.append(event)
            if event.get("method") == method:
                return

    def open(self, url):
        """Loads a page and gives its facts, and the events on the way."""
        self.events.clear()
        failure = self.do("Page.navigate", url=url).get("errorText")
        if failure:
            return None, [failure]
        self.wait_for("Page.loadEventFired")
        facts = self.do("Runtime.evaluate", expression=PAGE_FACTS, returnByValue=True)["result"]["value"]
        return facts, [problem for problem in map(problem_in, self.events) if problem]

    def requests(self):
        return [event["params"]["request"]["url"] for event in self.events
                if event.get("method") == "Network.requestWillBeSent"]

    def take_picture(self, file, height):
        self.do("Emulation.setDeviceMetricsOverride", width=WIDTH, height=height, deviceScaleFactor=1, mobile=False)
        file.write_bytes(base64.b64decode(self.do("Page.captureScreenshot")["data"]))
        self.set_size()

    def set_size(self):
        self.do("Emulation.setDeviceMetricsOverride", width=WIDTH, height=HEIGHT, deviceScaleFactor=1, mobile=False)

    def set_skin(self, skin):
        self.do("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": skin}])

    def close(self):
        self.session = None
        self.do("Browser.close")
        self.process.wait()


def problem_in(event):
    """What an event tells of a failure, or None."""
    parameters = event.get("params", {})
    if event.get("method") == "Network.loadingFailed":
        return f"a request failed: {parameters['errorText']}"
    if event.get("method") == "Log.entryAdded" and parameters["entry"]["level"] == "error":
        return f"{parameters['entry']['text']} {parameters['entry'].get('url', '')}"
    if event.get("method") == "Runtime.exceptionThrown":
        return f"an exception: {parameters['exceptionDetails']['text']}"
    return None


class Walk:
    def __init__(self, browser, first, folder):
        self.browser = browser
        self.first = first
        self.home = first.rsplit("/", 1)[0] + "/"
        self.folder = folder
        self.problems = []
        self.grounds = {}
        self.pictures = {}  # address: whether it was seen in any skin

    def complain(self, page, text):
        self.problems.append(f"{page[len(self.home):]}: {text}")

    def visit(self, page, skin):
        """The pages of the manual that this one leads to."""
        facts, problems = self.browser.open(page)
        for problem in problems:
            self.complain(page, problem)
        if facts is None:
            return []
        for request in self.browser.requests():
            if not request.startswith((self.home, "data:")):
                self.complain(page, f"fetches {request}")
        for picture in facts["pictures"]:
            if not picture["loaded"]:
                self.complain(page, f"picture not loaded: {picture['address']}")
            key = (page, picture["address"])
            self.pictures[key] = self.pictures.get(key, False) or picture["seen"]
        if facts["tooWide"]:
            self.complain(page, "is wider than its window")
        self.grounds.setdefault(skin, set()).add(facts["ground"])
        name = urllib.parse.unquote(page[len(self.home):]).replace("/", "-").removesuffix(".html")
        self.browser.take_picture(self.folder / f"{name}-{skin}.png", facts["height"])
        return [link.split("#")[0] for link in facts["links"] if link.startswith(self.home)]

    def in_skin(self, skin):
        self.browser.set_size()
        self.browser.set_skin(skin)
        found, waiting = {self.first}, [self.first]
        while waiting:
            for link in self.visit(waiting.pop(0), skin):
                if link not in found:
                    found.add(link)
                    waiting.append(link)
        return found

    def run(self):
        pages = self.in_skin("light")
        if self.in_skin("dark") != pages:
            self.complain(self.first, "leads to other pages in the dark skin")
        if self.grounds.get("light", set()) & self.grounds.get("dark", set()):
            self.complain(self.first, "looks the same in both skins")
        for (page, address), seen in self.pictures.items():
            if not seen:
                self.complain(page, f"picture seen in neither skin: {address}")
        home = pathlib.Path(urllib.parse.unquote(urllib.parse.urlsplit(self.home).path))
        there = {path.name for path in home.glob("*.html")}
        for name in sorted(there - {page.rsplit("/", 1)[1] for page in pages}):
            self.complain(self.first, f"no way leads to {name}")
        return pages


def main():
    first, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as profile:
        browser = Browser(profile)
        walk = Walk(browser, first, folder)
        pages = walk.run()
        browser.close()
    for problem in walk.problems:
        print(problem)
    print(f"{len(pages)} pages, {len(walk.pictures)} pictures, light and dark: {len(walk.problems)} problems")
    sys.exit(1 if walk.problems or not walk.pictures else 0)


if __name__ == "__main__":
    main()

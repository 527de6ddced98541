"""Names the links and pictures of a folder of HTML pages that lead nowhere, and ends with 1 where there are any. Links to other sites are not followed.

Usage: dead_links.py FOLDER
"""
import html.parser
import os
import pathlib
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    """The places in a page that links may lead to, and where its own links lead."""

    def __init__(self, text):
        super().__init__()
        self.places = {""}
        self.links = set()
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name"):
                self.places.add(value)
            elif name in ("href", "src") and value:
                self.links.add(value)


def dead_links(folder):
    pages = {path.relative_to(folder).as_posix(): Page(path.read_text(encoding="utf-8")) for path in folder.rglob("*.html")}
    for name, page in sorted(pages.items()):
        for link in sorted(page.links):
            parts = urllib.parse.urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            target = os.path.normpath(os.path.join(os.path.dirname(name), urllib.parse.unquote(parts.path))) if parts.path else name
            if not (folder / target).exists() or (target in pages and parts.fragment not in pages[target].places):
                yield f"{name}: {link}"


def main():
    found = list(dead_links(pathlib.Path(sys.argv[1])))
    print("\n".join(found))
    if not any(pathlib.Path(sys.argv[1]).glob("index.html")):
        print(f"{sys.argv[1]}: expected the pages of a manual, found none")
        return 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())

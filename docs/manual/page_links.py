#!/usr/bin/env python3
"""Filters a Markdown page for Doxygen. Links to files of the project that are not pages lead to the copies beside the manual; links to folders, and to pages and files that
are not in the manual, become plain text.

Usage: page_links.py PAGE (the working folder is the project's)
"""
import os
import re
import sys

LINK = re.compile(r"(?<!!)\[((?:[^\[\]]|\[[^\]]*\])*)\]\(([^)\s#]+)(#[^)]*)?\)")
COPIED = re.compile(r"^(?:examples/[^/]+\.cpp|docs/gallery/[^/]+\.svg)$")
PAGE = re.compile(r"^docs/(?:manual/[^/]+|gallery/README|ARCHITECTURE|PERFORMANCE|SECURITY)\.md$")


def with_link(text, target, anchor, folder):
    if re.match(r"\w+:", target):
        return f"[{text}]({target}{anchor})"
    path = os.path.normpath(os.path.join(folder, target))
    if PAGE.match(path):
        return f"[{text}]({target}{anchor})"
    if COPIED.match(path):
        return f'<a href="{os.path.basename(path)}">{text}</a>'
    return text


def filtered(page, folder):
    return LINK.sub(lambda match: with_link(match.group(1), match.group(2), match.group(3) or "", folder), page)


def main():
    with open(sys.argv[1], encoding="utf-8") as page:
        sys.stdout.write(filtered(page.read(), os.path.dirname(os.path.relpath(sys.argv[1]))))


if __name__ == "__main__":
    main()

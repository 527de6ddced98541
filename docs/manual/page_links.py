#!/usr/bin/env python3
"""Filters a Markdown page for Doxygen, so that its links, which lead to files of the project, lead to what the manual has of them: a header to the page of its class, an
example or a picture to the copy beside the manual. Links to folders, and to pages and files that are not in the manual, become plain text.

Usage: page_links.py PAGE (the working folder is the project's)
"""
import os
import re
import sys

# A link, or code, which has none whatever it looks like.
LINK_OR_CODE = re.compile(r"(?P<code>^```.*?^```|`[^`\n]*`)|(?<!!)\[(?P<text>(?:[^\[\]]|\[[^\]]*\])*)\]\((?P<target>[^)\s#]+)(?P<anchor>#[^)]*)?\)", re.MULTILINE | re.DOTALL)
COPIED = re.compile(r"^(?:examples/[^/]+\.cpp|docs/gallery/[^/]+\.svg)$")
PAGE = re.compile(r"^docs/(?:manual/[^/]+|gallery/README|ARCHITECTURE|PERFORMANCE|SECURITY)\.md$")


def class_of_header(path):
    """The full name of the class that a header is named after, or nothing."""
    name = os.path.splitext(os.path.basename(path))[0]
    try:
        with open(path, encoding="utf-8") as header:
            text = header.read()
    except OSError:
        return None
    definition = re.search(rf"^(?:class|struct) (?:\w+ )?{re.escape(name)}\b[^;\n]*$", text, re.MULTILINE)
    namespaces = re.findall(r"^namespace ([\w:]+) \{", text[:definition.start()], re.MULTILINE) if definition else []
    return f"{namespaces[-1]}::{name}" if namespaces else None


def with_link(text, target, anchor, folder):
    if re.match(r"\w+:", target):
        return f"[{text}]({target}{anchor})"
    path = os.path.normpath(os.path.join(folder, target))
    if PAGE.match(path):
        return f"[{text}]({target}{anchor})"
    if COPIED.match(path):
        return f"[{text}]({os.path.basename(path)})"
    name = class_of_header(path) if path.endswith(".h") else None
    return '@ref {} "{}"'.format(name, text.replace("`", "")) if name else text


def filtered(page, folder):
    return LINK_OR_CODE.sub(lambda match: match["code"] or with_link(match["text"], match["target"], match["anchor"] or "", folder), page)


def main():
    with open(sys.argv[1], encoding="utf-8") as page:
        sys.stdout.write(filtered(page.read(), os.path.dirname(os.path.relpath(sys.argv[1]))))


if __name__ == "__main__":
    main()

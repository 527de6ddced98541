#!/usr/bin/env python3
"""Filters a Markdown page for Doxygen, so that its links, which lead to files of the project, lead to what the manual has of them: a header to the page of its class or, where
the link names a function, to that, an example or a picture to the copy beside the manual, and a heading to that heading. Links to folders, and to pages and files that are not
in the manual, become plain text.

Usage: page_links.py PAGE (the working folder is the project's)
"""
import os
import re
import sys

# A link, a heading below the page's own, or code, which has neither whatever it looks like.
LINK = r"(?<!!)\[(?P<text>(?:[^\[\]]|\[[^\]]*\])*)\]\((?P<target>[^)\s#]*)(?:#(?P<anchor>[^)\s]*))?\)"
PART = re.compile(rf"(?P<code>^```.*?^```|`[^`\n]*`)|^(?P<level>##+) (?P<heading>[^\n]*)$|{LINK}", re.MULTILINE | re.DOTALL)
COPIED = re.compile(r"^(?:examples/[^/]+\.cpp|docs/gallery/[^/]+\.svg)$")
PAGE = re.compile(r"^docs/(?:manual/[^/]+|gallery/README|ARCHITECTURE|PERFORMANCE|SECURITY|LICENCES)\.md$")


def reference(name, text):
    return '@ref {} "{}"'.format(name, text.replace("`", ""))


def label_of_heading(path, anchor):
    """Doxygen's label of the heading that has this anchor in the page: one for each page and heading."""
    return re.sub(r"\W", "_", f"{os.path.splitext(path)[0]}_{anchor}")


def anchor_of_heading(heading):
    """As forges make them: in small letters, blanks as hyphens, without punctuation."""
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def name_in_header(path, text):
    """The full name of what a link to the header means: the function that its text names, or the class that the header is named after. Nothing for other headers."""
    try:
        with open(path, encoding="utf-8") as file:
            header = file.read()
    except OSError:
        return None
    function = re.sub(r"[^\w:]", "", text).rpartition(":")[2]
    title = os.path.splitext(os.path.basename(path))[0]
    for name, declaration in ((function, rf"^[^\s/#].*\b{function}\("), (title, rf"^(?:class|struct) (?:\w+ )?{re.escape(title)}\b[^;\n]*$")):
        found = re.search(declaration, header, re.MULTILINE) if name else None
        namespaces = re.findall(r"^namespace ([\w:]+) \{", header[:found.start()], re.MULTILINE) if found else []
        if namespaces:
            return f"{namespaces[-1]}::{name}"
    return None


def with_link(text, target, anchor, page):
    if re.match(r"\w+:", target):
        return f"[{text}]({target}{'#' + anchor if anchor else ''})"
    path = os.path.normpath(os.path.join(os.path.dirname(page), target)) if target else page
    if PAGE.match(path):
        return reference(label_of_heading(path, anchor), text) if anchor else f"[{text}]({target})"
    if COPIED.match(path):
        return f"[{text}]({os.path.basename(path)})"
    name = name_in_header(path, text) if path.endswith(".h") else None
    return reference(name, text) if name else text


def filtered(page, path):
    def part(match):
        if match["code"]:
            return match["code"]
        if match["level"]:
            heading = filtered(match["heading"], path)
            return f"{match['level']} {heading} {{#{label_of_heading(path, anchor_of_heading(match['heading']))}}}"
        return with_link(match["text"], match["target"], match["anchor"], path)

    return PART.sub(part, page)


def main():
    with open(sys.argv[1], encoding="utf-8") as page:
        sys.stdout.write(filtered(page.read(), os.path.relpath(sys.argv[1])))


if __name__ == "__main__":
    main()

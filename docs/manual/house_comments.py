#!/usr/bin/env python3
"""Filters a header for Doxygen, which does not know how our comments are meant. Prints the header with the same lines, words added within them.

A `///` comment stands for all declarations below it up to the next comment or blank line: those without a comment of their own get the one above repeated. Overrides do
not, as they have their base's words. Copies and comparisons that are defaulted or deleted get a standard sentence, and destructors without a comment are hidden.
A plain comment that stands by itself in a class, as `// Layout. In points.`, begins a section of the manual: its first sentence is the heading.
What stands in a namespace is put into the group of its folder. Private parts of classes and macros that export symbols are taken out.

Usage: house_comments.py HEADER (the working folder is the project's)
"""
import os
import re
import sys

TOKEN = re.compile(
    r"""(?P<doc>///(?!<)[^\n]*)|(?P<trailing>///<[^\n]*)|(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<directive>^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*)
    |(?P<string>"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])*')|(?P<newline>\n)|(?P<space>[ \t]+)|(?P<word>\w+)|(?P<other>.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

# Standard sentences of what a declaration without a comment declares, first match first. None hides it.
STANDARD = [
    (re.compile(r"~\w+\("), None),
    (re.compile(r"^friend (?:class|struct) "), None),
    (re.compile(r"^(?:constexpr )?(\w+)\(const \1&\w*\)(?:noexcept)?=delete"), "Not copied."),
    (re.compile(r"^(?:constexpr )?(\w+)&operator=\(const \1&\w*\)(?:noexcept)?=delete"), "Not assigned."),
    (re.compile(r"^(?:constexpr )?(\w+)\(\1&&\w*\)(?:noexcept)?=delete"), "Not moved."),
    (re.compile(r"^(?:constexpr )?(\w+)&operator=\(\1&&\w*\)(?:noexcept)?=delete"), "Not assigned."),
    (re.compile(r"^(?:constexpr )?(\w+)\(const \1&\w*\)(?:noexcept)?=default"), "A copy of every member."),
    (re.compile(r"^(?:constexpr )?(\w+)&operator=\(const \1&\w*\)(?:noexcept)?=default"), "Copies every member."),
    (re.compile(r"^(?:constexpr )?(\w+)\(\1&&\w*\)(?:noexcept)?(?:=default)?;?"), "Takes what the other has."),
    (re.compile(r"^(?:constexpr )?(\w+)&operator=\(\1&&\w*\)(?:noexcept)?(?:=default)?;?"), "Takes what the other has."),
    (re.compile(r"^using (?:\w+::)*(\w+)::\1;$"), "The constructors of the base."),
    (re.compile(r"operator==\(.*=default"), "Whether all members are equal."),
    (re.compile(r"^friend .*operator==\("), "Whether both are equal."),
]
HIDDEN = object()
ACCESS = re.compile(r"(?P<access>public|protected|private|signals)(?: slots)?:")
EXPORT_MACRO_OR_DIRECTIVE = re.compile(r"(?P<directive>^[ \t]*#[^\n]*)|\bTOLV_\w*EXPORT\b ?", re.MULTILINE)
# A first sentence too short to be the short form by itself: a backslash behind it joins the next one to it.
OWNERSHIP = re.compile(r"(?:Copied|Shared|Weak|Copied on setting)\.(?= )")


class Declaration:
    """One declaration at a time: where it starts, and its text without spaces that say nothing."""

    def __init__(self, start):
        self.start = start
        self.text = ""

    def add(self, token, kind):
        if kind == "word" and self.text[-1:].isidentifier():
            self.text += " "
        self.text += token

    def plain(self):
        text = re.sub(r"\[\[.*?\]\]", "", self.text).strip()
        return re.sub(r"\b(?:explicit|inline|static) ?", "", text)

    def opens(self):
        """What a brace after this text opens: a namespace, a class, an enum, or None for a body or an initial value."""
        text = without_template(self.plain())
        match = re.match(r"(?:typedef )?(namespace|class|struct|union|enum)\b", text)
        if not match or "(" in text.replace("alignas(", "") or "=" in text:
            return None
        return {"struct": "class", "union": "class"}.get(match.group(1), match.group(1))

    def is_forward(self):
        return re.match(r"(?:class|struct|union|enum)\b[^(){}=]*;$", without_template(self.plain())) is not None

    def is_documentable(self):
        return not self.is_forward() and not re.match(r"(?:static_assert|using namespace|;$)", self.plain())

    def is_override(self):
        return re.search(r"\b(?:override|final)\b", self.text.split("{")[0]) is not None and self.opens() is None


def without_template(text):
    if not text.startswith("template"):
        return text
    depth = 0
    for index, character in enumerate(text):
        if character == "<":
            depth += 1
        elif character == ">":
            depth -= 1
            if depth == 0:
                return text[index + 1:].lstrip()
    return text


def standard_sentence(declaration):
    """The sentence, HIDDEN, or None where the declaration needs words."""
    for pattern, sentence in STANDARD:
        if pattern.search(declaration.plain()):
            return HIDDEN if sentence is None else sentence
    return None


def repeated(comment):
    """The lines of a comment as one line; an empty line starts a paragraph and a dash an item."""
    text = ""
    in_list = False
    for line in comment:
        if line.startswith("- "):
            text += ("</li><li>" if in_list else " <ul><li>") + line[2:]
            in_list = True
        elif not line:
            text += "</li></ul>" if in_list else "<br><br>"
            in_list = False
        else:
            text += (" " if text else "") + line
    return text + ("</li></ul>" if in_list else "")


class HouseComments:
    def __init__(self, text, group):
        self.text = EXPORT_MACRO_OR_DIRECTIVE.sub(lambda match: match["directive"] or "", text)
        self.group = group
        self.insertions = []  # (offset, how many characters they replace, text)
        self.scopes = ["namespace"]
        self.open_sections = [False]  # one for each scope
        self.private_starts = [None]  # where the scope's private part begins, while it is in one
        self.private_parts = []  # (start, end)
        self.plain_comment = []  # the lines of a plain comment
        self.plain_comment_start = None
        self.comment = []  # the lines of the comment directly above
        self.comment_end = None
        self.own_comment = False  # whether it belongs to the next declaration by itself
        self.declaration = None
        self.parentheses = 0
        self.body_depth = 0
        self.line_is_empty = True

    def forget(self):
        self.comment = []
        self.own_comment = False

    def filtered(self):
        for match in TOKEN.finditer(self.text):
            self.take(match.lastgroup, match.group(), match.start())
        result = self.text
        for start, end in self.private_parts:
            self.insertions = [insertion for insertion in self.insertions if not start <= insertion[0] < end]
            self.insertions.append((start, end - start, "\n" * self.text.count("\n", start, end)))
        # From the end, so that offsets stay right; of two at one place the earlier one comes first.
        for offset, replaced, words in reversed(sorted(self.insertions, key=lambda insertion: insertion[0])):
            result = result[:offset] + words + result[offset + replaced:]
        return result

    def take(self, kind, token, offset):
        if kind == "newline":
            if self.line_is_empty and self.declaration is None:
                self.forget()
                self.begin_section(offset)
            self.line_is_empty = True
            return
        if kind == "space":
            return
        self.line_is_empty = False
        if self.declaration is not None and kind in ("doc", "comment", "trailing"):
            return
        if kind == "comment" and token.startswith("//") and self.scopes[-1] == "class":
            if not self.plain_comment:
                self.plain_comment_start = offset
            self.plain_comment.append(token[2:].strip())
        else:
            self.plain_comment = []
        if kind == "doc":
            if not self.own_comment:
                self.comment = []
            words = token[3:].strip()
            ownership = None if self.own_comment else OWNERSHIP.match(words)
            if ownership:
                words = words[:ownership.end()] + "\\" + words[ownership.end():]
                self.insertions.append((offset + token.index(". ") + 1, 0, "\\"))
            self.own_comment = True
            self.comment.append(words)
            self.comment_end = offset + len(token)
        elif kind in ("trailing", "comment", "directive"):
            self.forget()
        else:
            self.take_code(kind, token, offset)

    def begin_section(self, blank_line):
        """At the blank line below a plain comment, whose lines it keeps as many as they were."""
        if not self.plain_comment:
            return
        heading, _, rest = " ".join(self.plain_comment).partition(". ")
        closing = "/** @} */ " if self.open_sections[-1] else ""
        words = f"{closing}/** @name {heading.removesuffix('.')}\n{rest} */ /** @{{ */" + "\n" * (len(self.plain_comment) - 1)
        self.insertions.append((self.plain_comment_start, blank_line - self.plain_comment_start, words))
        self.open_sections[-1] = True
        self.plain_comment = []

    def end_section(self, offset):
        if self.open_sections[-1]:
            self.insertions.append((offset, 0, "/** @} */ "))
        self.open_sections[-1] = False

    def end_private_part(self, offset):
        if self.private_starts[-1] is not None:
            self.private_parts.append((self.private_starts[-1], offset))
        self.private_starts[-1] = None

    def close_scope(self, offset):
        self.end_section(offset)
        self.end_private_part(offset)
        self.scopes.pop()
        self.open_sections.pop()
        self.private_starts.pop()
        self.forget()

    def take_code(self, kind, token, offset):
        if self.declaration is None:
            if token == "}":
                self.close_scope(offset)
                return
            if token in (";", "Q_OBJECT") or (token == "," and self.scopes[-1] == "enum"):
                return
            self.declaration = Declaration(offset)
        if self.body_depth > 0:
            self.body_depth += {"{": 1, "}": -1}.get(token, 0)
            if self.body_depth == 0:
                self.declaration.add("{}", kind)
                self.end_of_body(offset + 1)
            return
        if token in "([":
            self.parentheses += 1
        elif token in ")]":
            self.parentheses -= 1
        if self.parentheses == 0 and self.ends_enumerator(token):
            self.finish()
            if token == "}":
                self.close_scope(offset)
            return
        if token == "{" and self.parentheses == 0:
            opened = self.declaration.opens()
            if opened:
                self.open_scope(opened, offset + 1)
            else:
                self.body_depth = 1
            return
        if token == "{":
            # An initial value among arguments.
            self.body_depth = 1
            return
        self.declaration.add(token, kind)
        if self.parentheses == 0 and token == ";":
            self.finish()
        elif token == ":" and ACCESS.fullmatch(self.declaration.text):
            self.end_section(self.declaration.start)
            self.end_private_part(self.declaration.start)
            if self.declaration.text == "private:":
                self.private_starts[-1] = offset + 1
            self.declaration = None
            self.forget()

    def ends_enumerator(self, token):
        return self.scopes[-1] == "enum" and token in (",", "}")

    def end_of_body(self, end):
        following = self.text[end:].lstrip()
        is_function = "(" in self.declaration.text
        if self.parentheses == 0 and is_function and following[:1] not in (";", ",", "{", ")"):
            self.finish()

    def open_scope(self, kind, start):
        if kind == "namespace":
            self.forget()
        else:
            self.document(allow_repeat=False)
        is_private = re.match(r"class\b", without_template(self.declaration.plain())) is not None
        self.declaration = None
        self.scopes.append(kind)
        self.private_starts.append(start if is_private else None)
        self.open_sections.append(False)
        self.forget()

    def finish(self):
        self.document(allow_repeat=True)
        self.declaration = None

    def document(self, allow_repeat):
        declaration = self.declaration
        if not declaration.is_documentable():
            return
        group = f"@ingroup {self.group}" if self.group and self.scopes[-1] == "namespace" else ""
        if self.own_comment:
            self.own_comment = False
            if group:
                self.insertions.append((self.comment_end, 0, f" {group}"))
            return
        sentence = standard_sentence(declaration)
        if sentence is HIDDEN:
            self.insertions.append((declaration.start, 0, "/** @cond */ "))
            end = self.text.index("\n", declaration.start)
            self.insertions.append((end, 0, " /** @endcond */"))
            return
        opening = "/**"
        if sentence is None and allow_repeat and self.comment and not declaration.is_override():
            sentence = repeated(self.comment)
            # A comment of one line is all short form, as it is above its own declaration.
            opening = "/*! @brief" if len(self.comment) == 1 else "/**"
        if sentence:
            self.insertions.append((declaration.start, 0, " ".join(filter(None, (opening, sentence, group, "*/ ")))))


def group_of(path):
    """The Doxygen group of a header's folder: "TOLVGraphing/platform/text/Font.h" is in "TOLVGraphing_platform_text"."""
    folder = path.rpartition("/")[0]
    return re.sub(r"\W", "_", folder)


def main():
    path = os.path.relpath(sys.argv[1])
    with open(path, encoding="utf-8") as header:
        sys.stdout.write(HouseComments(header.read(), group_of(path)).filtered())


if __name__ == "__main__":
    main()

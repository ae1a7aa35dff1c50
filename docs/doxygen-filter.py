#!/usr/bin/env python3
"""What Doxygen reads instead of a file of ours: docs/Doxyfile.in calls this with the file's name.

Headers are written to be read as they are: the banner tells what a class is, each operation's comment has labels in
a column (Returns, Throws, Cost, Pointers, Example), and rules divide the operations into groups. A declaration right
below another one shares its comment; one without any, in a class whose banner says "As CIntArray, ", is as that class's.
Here the banner becomes the class's text, labels become paragraphs, groups become Doxygen's, and every declaration gets
its comment. In the pages, links to headers become links to their reference, and links to files that the reference does not
hold become plain text.
"""

import re
import sys

LABEL = re.compile(r"^\s*///   (Returns|Throws|Cost|Pointers|Example)\s+(.*)$")
MORE = re.compile(r"^\s*///             (.*)$")
RULE = re.compile(r"^\s*// ---- (.*?) -+$")
TITLE = re.compile(r"^\s*// (The [a-z ]+): (.*)$")
FAMILY = re.compile(r"\bAs (C\w+),")
DECLARATION = re.compile(r"(?!class |struct |namespace |public:|private:)[\w~]")
CLASS = re.compile(r"^(?:template .*)?class BEDPLATE_API .*?(\w+)$")


def escaped(text):
    """Text as it stands: what Doxygen takes for markup is none. Between quotes it takes nothing for markup."""
    parts = re.split(r'("[^"]*")', text)
    return "".join(p if p.startswith('"') else re.sub(r"([<>&%#@*\\])", r"\\\1", p) for p in parts)


def prose(text):
    """A line of a comment; one that is set in by four blanks is code."""
    return text if text.startswith("    ") else escaped(text)


def capitalised(text):
    return text[:1].upper() + text[1:]


class Header:
    def __init__(self, lines):
        self.lines = lines
        self.result = []
        self.group = False
        self.label = None
        self.text = []
        self.shared = []
        self.indent = ""
        end = next(i for i, line in enumerate(lines) if not line.startswith("//"))
        self.banner = [re.sub(r"^// ?", "", line) for line in lines[:end]]
        self.start = end
        self.family = FAMILY.search("\n".join(self.banner))

    def emit(self, *lines):
        self.result.extend(lines)

    def end_label(self):
        if self.label == "Example":
            self.text.append("@endverbatim")
        self.label = None

    def end_comment(self):
        """Comments go out as blocks: Doxygen would show the slashes of others in examples."""
        self.end_label()
        if self.text:
            self.emit("/**", *self.text, "*/")
            self.shared = self.text
        self.text = []

    def share_comment(self, line):
        """Gives a declaration without a comment that of the one above it, or its family's."""
        above = self.lines[self.at - 1]
        if above in ("", "public:"):
            self.shared = []
        if not line.startswith(self.indent) or not DECLARATION.match(line[len(self.indent):]) or above[-1:] not in ";{}:":
            return
        if self.family and not self.shared:
            self.shared = ["As in %s." % self.family[1]]
        if self.shared:
            self.emit("/**", *self.shared, "*/")

    def end_group(self):
        if self.group:
            self.emit("", "///@}", "")
        self.group = False

    def start_group(self, title, *text):
        self.end_group()
        self.emit("/**", "@name " + escaped(title), *map(prose, text), "*/", "///@{")
        self.group = True

    def start_label(self, label, text):
        self.end_label()
        self.label = label
        if label == "Example":
            self.text += ["@par Example", "@verbatim", text]
        else:
            self.text += ["@par " + label, escaped(text)]

    def comment(self, line):
        """A line of an operation's comment."""
        if found := LABEL.match(line):
            self.start_label(found[1], found[2])
        elif self.label and (found := MORE.match(line)):
            self.text.append(found[1] if self.label == "Example" else escaped(found[1]))
        else:
            self.end_label()
            self.text.append(prose(re.sub(r"^\s*/// ?", "", line)))

    def describe_class(self, line):
        """The banner belongs to the class, unless that has a comment of its own."""
        if not self.lines[self.at - 1].startswith("///"):
            self.emit("/**", *map(prose, self.banner), "*/")
        self.emit(line)

    def filtered(self):
        has_class = any(CLASS.match(line) and not self.lines[i - 1].startswith("///")
                        for i, line in enumerate(self.lines))
        self.emit("/**", "@file", *map(prose, self.banner[:1] if has_class else self.banner), "*/", "")
        for self.at in range(self.start, len(self.lines)):
            self.line(self.lines[self.at])
        self.end_group()
        return self.result

    def line(self, line):
        if re.match(r"^\s*///", line):
            return self.comment(line)
        if self.text:
            self.end_comment()
        else:
            self.share_comment(line)
        self.indent = {"public:": "    ", "private:": "none", "};": ""}.get(line, self.indent)
        if found := RULE.match(line):
            title, _, text = found[1].partition(": ")
            self.start_group(title, capitalised(text))
        elif found := TITLE.match(line):
            self.start_group(found[1], capitalised(found[2]), *self.rest_of_comment())
        else:
            if re.match(r"^(private:|};|class |#if |namespace )", line):
                self.end_group()
            if CLASS.match(line):
                return self.describe_class(line)
            self.emit(line)

    def rest_of_comment(self):
        for line in self.lines[self.at + 1:]:
            found = re.match(r"^\s*//(?!/) ?(.*)$", line)
            if not found:
                return
            yield found[1]


def filtered_page(lines):
    def link(found):
        text, target = found[1], found[2].split("/")[-1]
        if target.endswith(".h"):
            return '@ref %s "%s"' % (target, text.replace("`", ""))
        return text

    in_code = False
    for line in lines:
        in_code ^= line.startswith("```")
        yield line if in_code else re.sub(r"(?<!!)\[([^\]]+)\]\(((?!http|#)[^)]*?(?<!\.md))\)", link, line)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        lines = file.read().splitlines()
    lines = filtered_page(lines) if sys.argv[1].endswith(".md") else Header(lines).filtered()
    print("\n".join(lines))


main()

#!/usr/bin/env python3
"""Checks that in every INSERT of the loggers each value names its column: the trailing comments of
the value lines, read downward, are the columns of the statement's head, in their order.

Usage: check_columns.py ROOT
Names every offending line; exit code 1 when there is one.

What a value line is and where the next column begins is read from the pattern that it appends: a
comma outside quotes ends a column, a parenthesis the list. A piece that begins several columns
names them all; one that goes on with a column names none. Adjacent literals are one, unless
comments stand between them: each then names its own. Where the values of a column are appended in
alternatives, each of them names it. A function that is handed the composer first is read where it
is called, also one that begins the statement and leaves its end to its callers; a comment behind
such a call says from which column to which.
"""

import re
import sys
from collections import namedtuple
from pathlib import Path

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<string>"(?:\\.|[^"\\\n])*")
      | (?P<char>'(?:\\.|[^'\\\n])+')
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<word>[A-Za-z_0-9]+)
      | (?P<space>\s+)
      | (?P<sign>.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)
HEAD = re.compile(r"INSERT INTO (\w+) ?\(([^()]*)\) VALUES ?\(")
LABEL = re.compile(r"// (\w+(?:, \w+)*)")
SPAN = re.compile(r"// (\w+) to (\w+)")
# What the composer appends; its other operations are no values.
FORMS = {"Piece", "Integer", "Text", "TextAt", "Character", "MoneyText", "DecimalText",
         "DateTimeText", "DateText", "PercentText", "TaxCode"}

Token = namedtuple("Token", "kind text line")
# A statement with the comment behind its end, and those behind its other lines by the token that
# they stand behind; and a header with the blocks that it decides between: alternatives, of which
# exactly one is run, or not.
Statement = namedtuple("Statement", "tokens comment inner")
Branches = namedtuple("Branches", "header blocks alternatives")
# A function that is handed a composer: under which name, and what it does.
Helper = namedtuple("Helper", "composer nodes begins")


class Fault(Exception):
    def __init__(self, line, text):
        super().__init__(text)
        self.line = line


def tokens_of(source):
    line = 1
    for match in TOKEN.finditer(source):
        if match.lastgroup not in ("space", "directive"):
            yield Token(match.lastgroup, match.group(), line)
        line += match.group().count("\n")


class Parser:
    """Statements and blocks of a source, as far as they matter here."""

    def __init__(self, source):
        self.tokens = list(tokens_of(source))
        self.at = 0

    def peek(self):
        while self.at < len(self.tokens) and self.tokens[self.at].kind == "comment":
            self.at += 1
        return self.tokens[self.at] if self.at < len(self.tokens) else None

    def take(self):
        token = self.peek()
        if token is None:
            raise Fault(self.tokens[-1].line if self.tokens else 1, "ends within a block")
        self.at += 1
        return token

    def nested(self, comments=None):
        """What stands in parentheses, brackets or braces, from the opening one just taken; notes
        the comments behind its tokens."""
        inside = []
        depth = 1
        while depth > 0:
            token = self.take()
            inside.append(token)
            if comments is not None and self.comment_behind(token):
                comments[token] = self.comment_behind(token)
            depth += (token.text in "([{") - (token.text in ")]}") if token.kind == "sign" else 0
        return inside

    def comment_behind(self, token):
        following = self.tokens[self.at] if self.at < len(self.tokens) else None
        if following is not None and following.kind == "comment" and following.line == token.line:
            return following.text
        return ""

    def block(self, ends=("}",)):
        """The statements up to, not including, a token of `ends` or the end of the source."""
        nodes = []
        while self.peek() is not None and self.peek().text not in ends:
            nodes.append(self.statement())
        return nodes

    def braced(self):
        inside = self.block()
        self.take()
        return inside

    def body(self):
        """The statements in braces, or the only one without them."""
        if self.peek().text == "{":
            self.take()
            return self.braced()
        return [self.statement()]

    def statement(self):
        first = self.peek()
        if first.text == "if":
            return self.conditional()
        if first.text == "switch":
            return self.switch()
        gathered = []
        inner = {}
        while True:
            token = self.take()
            if token.text == ";":
                return Statement(gathered, self.comment_behind(token), inner)
            if token.text == "{":
                before = gathered[-1].text if gathered else ""
                words = [word.text for word in gathered]
                opens = before in ("", ")", "else", "do", "const", "override", "noexcept") or any(
                    word in ("namespace", "class", "struct") for word in words)
                if opens and "enum" not in words:
                    return Branches(gathered, [self.braced()], False)
                gathered += [token, *self.nested()]
            elif token.text in ("(", "["):
                gathered += [token, *self.nested(inner)]
            elif token.text == ":" and gathered[0].text in ("public", "private", "protected"):
                return Statement(gathered, "", {})
            else:
                gathered.append(token)

    def header(self):
        header = [self.take()]
        while self.peek().text != "(":
            header.append(self.take())
        self.take()
        return header + self.nested()

    def conditional(self):
        header = self.header()
        blocks = [self.body()]
        if self.peek() is not None and self.peek().text == "else":
            self.take()
            blocks.append(self.body())
        else:
            blocks.append([])
        return Branches(header, blocks, True)

    def switch(self):
        header = self.header()
        self.take()
        blocks = []
        default = False
        while self.peek().text != "}":
            while self.peek().text in ("case", "default"):
                default |= self.peek().text == "default"
                while self.take().text != ":":
                    pass
            blocks.append(self.block(("case", "default", "}")))
        self.take()
        return Branches(header, blocks if default else [*blocks, []], True)


def renamed(nodes, old, new):
    """The nodes with one word in the place of another."""
    def words(tokens):
        return [token._replace(text=new) if token.kind == "word" and token.text == old else token
                for token in tokens]

    return [node._replace(tokens=words(node.tokens)) if isinstance(node, Statement) else
            Branches(words(node.header), [renamed(block, old, new) for block in node.blocks],
                     node.alternatives) for node in nodes]


def functions_of(nodes):
    """The functions among the nodes that take a composer first: name, and its name within."""
    for node in nodes:
        if not isinstance(node, Branches) or node.alternatives:
            continue
        words = [token.text for token in node.header]
        if "namespace" in words:
            yield from functions_of(node.blocks[0])
        elif "(" in words:
            opening = words.index("(")
            first = words[opening + 1:]
            first = first[:first.index(",") if "," in first else len(first) - 1]
            if len(first) > 2 and first[-2] == "&" and "const" not in first:
                yield words[opening - 1], first[-1], node.blocks[0]


def helpers_of(trees):
    """The helpers of all sources, by name."""
    helpers = {}
    for tree in trees:
        for name, composer, nodes in functions_of(tree):
            begins = [node for node in nodes if isinstance(node, Statement) and any(
                of == composer and any(head.startswith("INSERT") for head in patterns_of(arguments))
                for of, arguments in calls_of(node.tokens, "Begin"))]
            executes = any(of == composer for node in nodes if isinstance(node, Statement)
                           for of, _ in calls_of(node.tokens, "Execute"))
            if not executes:
                helpers[name] = Helper(composer, nodes, bool(begins))
    return helpers


def helper_calls(tokens, helpers):
    """The helpers that a statement calls, each with what it hands over as the composer."""
    for i in range(len(tokens) - 3):
        if (tokens[i].text in helpers and tokens[i + 1].text == "(" and tokens[i + 2].kind == "word"
                and tokens[i + 3].text in ",)"):
            yield helpers[tokens[i].text], tokens[i + 2].text


def calls_of(tokens, name):
    """The calls of an operation among the tokens: what it is called on, and its arguments."""
    for i in range(len(tokens) - 3):
        if (tokens[i].kind == "word" and tokens[i + 1].text == "." and tokens[i + 2].text == name
                and tokens[i + 3].text == "("):
            yield tokens[i].text, tokens[i + 4:-1]


def literal(tokens):
    return "".join(token.text[1:-1] for token in tokens)


def patterns_of(arguments):
    """The texts that the first argument may be; none where it is no literal."""
    first = []
    depth = 0
    for token in arguments:
        if token.kind == "sign":
            depth += (token.text in "([{") - (token.text in ")]}")
            if token.text == "," and depth == 0:
                break
        first.append(token)
    question = [i for i, token in enumerate(first) if token.text == "?"]
    if question:
        colon = next(i for i, token in enumerate(first) if token.text == ":" and i > question[0])
        choices = [first[question[0] + 1:colon], first[colon + 1:]]
    else:
        choices = [first]
    if all(choice and all(token.kind == "string" for token in choice) for choice in choices):
        return [literal(choice) for choice in choices]
    return []


class Values:
    """How far the values of one INSERT have come."""

    def __init__(self):
        self.labels = []
        self.quoted = False
        self.within = False  # in the midst of a column
        self.closed = False

    def state(self):
        return self.quoted, self.within, self.closed

    def copy(self):
        other = Values()
        other.labels = list(self.labels)
        other.quoted, other.within, other.closed = self.state()
        return other

    def append(self, pattern):
        """Goes through a pattern and answers how many columns begin in it."""
        begun = 0
        for character in pattern:
            if not self.quoted and character in ",)":
                self.within = False
                self.closed |= character == ")"
                continue
            if not self.within:
                begun += 1
                self.within = True
            if character == "'":
                self.quoted = not self.quoted
        return begun

    def line(self, statement, arguments):
        pieces = [[]]
        for token in arguments:
            pieces[-1].append(token)
            if token.kind == "string" and token in statement.inner:
                pieces.append([])
        for piece in pieces:
            last = piece is pieces[-1]
            self.piece(piece[0].line if len(pieces) > 1 else statement.tokens[0].line,
                       statement.comment if last else statement.inner[piece[-1]], piece)

    def piece(self, number, comment, arguments):
        if self.closed:
            raise Fault(number, "a value behind the end of the list")
        named = LABEL.fullmatch(comment)
        labels = named[1].split(", ") if named else []
        if comment and not labels:
            raise Fault(number, f"'{comment}' names no column")
        patterns = patterns_of(arguments)
        if patterns:
            ways = []
            for pattern in patterns:
                way = self.copy()
                ways.append((way.append(pattern), way.state()))
            if len(set(ways)) != 1:
                raise Fault(number, "its alternatives end differently")
            begun, (self.quoted, self.within, self.closed) = ways[0]
        else:
            # A pattern handed in: what it holds is what the line says, to the end of a column.
            begun = max(len(labels), 1)
            self.within = False
        # Without a comma before it, a value does not look like a column of its own.
        if len(labels) != begun and not (begun == 0 and labels):
            raise Fault(number, f"begins {begun} columns and names {len(labels)}")
        self.labels += labels


def walk_helper(statement, helper, composer, values, helpers):
    """Takes the value lines of a helper where it is called."""
    before = len(values.labels)
    walk_values(renamed(helper.nodes, helper.composer, composer), composer, values, helpers)
    added = values.labels[before:]
    span = SPAN.fullmatch(statement.comment)
    if statement.comment and (not span or not added or span.groups() != (added[0], added[-1])):
        raise Fault(statement.tokens[0].line,
                    f"'{statement.comment}' does not say which columns are written")


def walk_values(nodes, composer, values, helpers):
    """Takes the value lines of a list from `nodes`, up to the statement's execution or the next
    one's beginning."""
    for node in nodes:
        tokens = node.header if isinstance(node, Branches) else node.tokens
        if any(name == composer for operation in ("Execute", "Begin")
               for name, _ in calls_of(tokens, operation)):
            return
        if isinstance(node, Statement):
            for helper, handed in helper_calls(tokens, helpers):
                if handed == composer and helper.begins:
                    return
                if handed == composer:
                    walk_helper(node, helper, composer, values, helpers)
            for form in FORMS:
                for name, arguments in calls_of(tokens, form):
                    if name == composer:
                        values.line(node, arguments)
            continue
        ways = []
        for block in node.blocks:
            way = values.copy()
            walk_values(block, composer, way, helpers)
            ways.append(way)
        if any((way.labels, way.state()) != (ways[0].labels, ways[0].state()) for way in ways) or (
                not node.alternatives and ways[0].labels != values.labels):
            raise Fault(tokens[0].line, "not every way through here names the same columns")
        values.labels = ways[0].labels
        values.quoted, values.within, values.closed = ways[0].state()


def check_insert(number, composer, head, following, helpers):
    match = HEAD.fullmatch(head)
    if match is None:
        raise Fault(number, "the head is not one literal up to its values")
    columns = match[2].split(", ")
    values = Values()
    walk_values(following, composer, values, helpers)
    if values.labels != columns:
        for column, label in zip(columns, values.labels):
            if column != label:
                raise Fault(number, f"{match[1]}: a line names {label} where {column} stands")
        raise Fault(number, f"{match[1]}: {len(columns)} columns, {len(values.labels)} named")
    if not values.closed:
        raise Fault(number, f"{match[1]}: the list of values is not closed")


def walk(nodes, report, helpers, within=None):
    """Checks every INSERT that begins among the nodes, or in a helper called there, and answers how
    many begin among the nodes themselves. What a helper begins is checked where it is called."""
    inserts = 0
    for i, node in enumerate(nodes):
        if isinstance(node, Branches):
            words = [token.text for token in node.header]
            name = words[words.index("(") - 1] if "(" in words else None
            inserts += sum(walk(block, report, helpers,
                                helpers.get(name) if not node.alternatives else within)
                           for block in node.blocks)
            continue
        begun = [(composer, head, nodes[i + 1:], 1)
                 for composer, arguments in calls_of(node.tokens, "Begin")
                 for head in patterns_of(arguments) if head.startswith("INSERT")]
        if within is not None and within.begins:
            inserts += len(begun)
            continue
        for helper, composer in helper_calls(node.tokens, helpers):
            own = renamed(helper.nodes, helper.composer, composer)
            begun += [(composer, head, own[j + 1:] + nodes[i + 1:], 0)
                      for j, inner in enumerate(own) if isinstance(inner, Statement)
                      for of, arguments in calls_of(inner.tokens, "Begin") if of == composer
                      for head in patterns_of(arguments) if head.startswith("INSERT")]
        for composer, head, following, here in begun:
            inserts += here
            try:
                check_insert(node.tokens[0].line, composer, head, following, helpers)
            except Fault as fault:
                report(fault)
    return inserts


def check(path, name, helpers):
    """Prints the faults of a source; answers how many INSERTs and how many faults it has."""
    faults = []
    source = path.read_text(encoding="utf-8")
    try:
        inserts = walk(Parser(source).block(()), faults.append, helpers)
        literals = sum(token.kind == "string" and token.text.startswith('"INSERT')
                       for token in tokens_of(source))
        if inserts != literals:
            faults.append(Fault(1, f"{literals} INSERTs, of which {inserts} begin a statement"))
    except Fault as fault:
        inserts = 0
        faults.append(fault)
    for fault in faults:
        print(f"{name}:{fault.line}: {fault}")
    return inserts, len(faults)


def called(nodes, helpers):
    for node in nodes:
        if isinstance(node, Branches):
            for block in node.blocks:
                yield from called(block, helpers)
        else:
            yield from (helper for helper, _ in helper_calls(node.tokens, helpers))


def main(root):
    sources = sorted(path for path in Path(root, "CmdDBLogger").glob("*")
                     if path.suffix in (".cpp", ".h"))
    trees = []
    for path in sources:
        try:
            trees.append(Parser(path.read_text(encoding="utf-8")).block(()))
        except Fault:
            pass  # named below
    helpers = helpers_of(trees)
    calls = [helper for tree in trees for helper in called(tree, helpers)]
    inserts = 0
    faults = 0
    for name, helper in helpers.items():
        if helper.begins and helper not in calls:
            print(f"{name}: begins an INSERT and is not called")
            faults += 1
    for path in sources:
        found, wrong = check(path, path.relative_to(root).as_posix(), helpers)
        inserts += found
        faults += wrong
    if inserts == 0 and faults == 0:
        print(f"{root}: no INSERT found")
        return 1
    print(f"{inserts} inserts, {faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(Path(sys.argv[1]).resolve()))

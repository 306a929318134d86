"""What can be wrong with a source in one place: its mutants, each one text with one change.

Works on the tokens of C++, so that comments, layout, include lines and assertions of the
compiler (static_assert) stay as they are."""
import re
from collections import namedtuple

# Where it is (offsets into the text), what stands there instead, and what kind of change it is.
Mutant = namedtuple("Mutant", "begin end text kind")
Token = namedtuple("Token", "kind text begin end")

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<raw>R"(?P<fence>[^()\s\\]*)\(.*?\)(?P=fence)")
      | (?P<string>"(?:\\.|[^"\\\n])*")
      | (?P<char>'(?:\\.|[^'\\\n])+')
      | (?P<number>(?<![\w.])\d[\w.']*)
      | (?P<word>[A-Za-z_]\w*)
      | (?P<space>\s+)
      | (?P<sign>\[\[|\]\]|->|::|\+\+|--|&&|\|\||<<=|>>=|<<|[<>=!+\-*/%&|^]=|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

SIGNS = {"==": ("!=",), "!=": ("==",), "<=": ("<", ">"), ">=": (">", "<"), "&&": ("||",),
         "||": ("&&",), "+": ("-",), "-": ("+",), "+=": ("-=",), "-=": ("+=",), "++": ("--",),
         "--": ("++",), "*=": ("/=",), "/": ("*",), "%": ("/",), "<<": (">>",), "|": ("&",)}
COMPARISONS = {"<": ("<=", ">="), ">": (">=", "<=")}
WORDS = {"TRUE": "FALSE", "FALSE": "TRUE", "true": "false", "false": "true"}
OPENING, CLOSING = "([{", ")]}"


def tokens_of(text):
    tokens = [Token(match.lastgroup if match.lastgroup != "fence" else "raw", match.group(),
                    match.start(), match.end())
              for match in TOKEN.finditer(text)]
    return [token for token in tokens if token.kind not in ("comment", "directive", "space")]


def closing_of(tokens, at):
    """The index of the token that closes the one at `at`; None where none does."""
    depth = 0
    for i in range(at, len(tokens)):
        if tokens[i].kind == "sign" and tokens[i].text in OPENING:
            depth += 1
        elif tokens[i].kind == "sign" and tokens[i].text in CLOSING:
            depth -= 1
            if depth == 0:
                return i
    return None


def ends_switch(tokens, at):
    """Whether a token is the brace behind a switch's last case."""
    if tokens[at].text != "}":
        return False
    opening = next((i for i in range(at, -1, -1)
                    if tokens[i].text == "{" and closing_of(tokens, i) == at), None)
    word = next((tokens[i].text for i in range(opening or 0, -1, -1)
                 if tokens[i].text in ("switch", ";", "if", "while", "for")), None)
    return word == "switch"


def skipped(tokens):
    """Which tokens are left alone: in attributes, in static_assert, in template lists."""
    alone = set()
    for i, token in enumerate(tokens):
        if token.text in ("static_assert", "assert", "alignas", "sizeof") and i + 1 < len(tokens) \
                and tokens[i + 1].text == "(":
            end = closing_of(tokens, i + 1)
            alone.update(range(i, (end or i) + 1))
        if token.text == "[[":
            end = next((j for j in range(i, len(tokens)) if tokens[j].text == "]]"), i)
            alone.update(range(i, end + 1))
    return alone


def letters(token):
    """A literal with one of its characters another, and with one less."""
    inside = token.text[1:-1]
    for i, character in enumerate(inside):
        if character == "\\" or (i > 0 and inside[i - 1] == "\\"):
            continue
        # The characters of a conversion belong together.
        other = "x" if character != "x" else "y"
        at = token.begin + 1 + i
        yield Mutant(at, at + 1, other, "letter")
        if token.kind == "string":
            yield Mutant(at, at + 1, "", "letter dropped")


def is_template_sign(text, token):
    """Of < and > only those with a blank on both sides compare."""
    return not (text[token.begin - 1:token.begin].isspace() and text[token.end:token.end + 1].isspace())


def statements_of(tokens):
    """The statements that are a call alone: index of the first token and of the semicolon."""
    for i, token in enumerate(tokens):
        if i == 0 or tokens[i - 1].text not in ("{", "}", ";") or token.kind != "word":
            continue
        if token.text in ("return", "if", "for", "while", "switch", "case", "using", "struct", "class",
                          "do", "else", "typedef", "template", "namespace", "extern", "enum"):
            continue
        end = next((j for j in range(i, len(tokens)) if tokens[j].text in (";", "{")), None)
        if end is None or tokens[end].text != ";":
            continue
        words = tokens[i:end]
        chained = all(tokens[j].kind == "word" or tokens[j].text in ("::", ".", "->")
                      for j in range(i, next((k for k in range(i, end) if tokens[k].text == "("), end)))
        adjacent_words = any(words[j].kind == "word" and words[j + 1].kind == "word"
                             for j in range(len(words) - 1) if words[j].text != "new")
        if words[-1].text == ")" and chained and not adjacent_words:
            yield i, end


WORD_OR_NUMBER = re.compile(r"[A-Za-z_]{2,}|\d+")


def words_of(text, offset, kind):
    """A text in another language, a page's style or script: each word with its last letter another,
    each number with one more."""
    for match in WORD_OR_NUMBER.finditer(text):
        if match.group().isdigit():
            yield Mutant(offset + match.start(), offset + match.end(), str(int(match.group()) + 1),
                         kind)
        else:
            other = "x" if match.group()[-1] not in "xX" else "y"
            yield Mutant(offset + match.end() - 1, offset + match.end(), other, kind)


def schema_mutants_of(text):
    """Every mutant of the schema: its words, and its lines left out."""
    at = 0
    for line in text.splitlines(True):
        statement = line.split("--")[0]
        yield from words_of(statement, at, "schema word")
        if re.fullmatch(r"  [a-z_]+ [^(]*,\s*", statement):
            yield Mutant(at, at + len(line), "", "column dropped")
        elif re.match(r"CREATE (UNIQUE )?INDEX ", statement):
            yield Mutant(at, at + len(line), "", "index dropped")
        at += len(line)


def mutants_of(text):
    """Every mutant of a C++ source."""
    tokens = tokens_of(text)
    alone = skipped(tokens)
    for i, token in enumerate(tokens):
        if i in alone:
            continue
        following = tokens[i + 1] if i + 1 < len(tokens) else None
        if token.kind in ("string", "char"):
            yield from letters(token)
        elif token.kind == "raw":
            first, last = token.text.index("(") + 1, token.text.rindex(")")
            yield from words_of(token.text[first:last], token.begin + first, "embedded text")
        elif token.kind == "number" and re.fullmatch(r"\d+|0[xX][0-9A-Fa-f]+", token.text):
            number = int(token.text, 0) if not re.fullmatch(r"0\d+", token.text) else None
            if number is not None:
                yield Mutant(token.begin, token.end, str(number + 1), "constant")
                if number > 0:
                    yield Mutant(token.begin, token.end, str(number - 1), "constant")
        elif token.kind == "word" and token.text in WORDS:
            yield Mutant(token.begin, token.end, WORDS[token.text], "constant")
        elif token.kind == "word" and token.text in ("break", "continue") and following.text == ";":
            if i + 2 == len(tokens) or ends_switch(tokens, i + 2):
                continue
            yield Mutant(token.begin, following.end, ";", "branch dropped")
        elif token.kind == "word" and token.text in ("if", "while") and following.text == "(":
            end = closing_of(tokens, i + 1)
            inside = text[following.end:tokens[end].begin]
            if end is not None and ";" not in inside and "= " not in inside.replace("== ", "").replace(
                    "!= ", "").replace("<= ", "").replace(">= ", ""):
                yield Mutant(following.end, tokens[end].begin, f"!({inside})", "condition")
        elif token.kind == "word" and token.text == "return" and following.text != ";":
            end = next((j for j in range(i, len(tokens)) if tokens[j].text == ";"), None)
            value = text[following.begin:tokens[end].begin] if end is not None else "{"
            if "{" not in value and value not in ("FALSE", "false", "0", "nullptr", '""'):
                yield Mutant(following.begin, tokens[end].begin, "{}", "return")
        elif token.text == "!":
            yield Mutant(token.begin, token.end, "", "logic")
        elif token.kind == "sign" and token.text in COMPARISONS and not is_template_sign(text, token):
            for other in COMPARISONS[token.text]:
                yield Mutant(token.begin, token.end, other, "comparison")
        elif token.kind == "sign" and token.text in SIGNS:
            if token.text in "+-" and not text[token.end:token.end + 1].isspace():
                if token.text == "-":
                    yield Mutant(token.begin, token.end, "", "sign")
                continue
            for other in SIGNS[token.text]:
                yield Mutant(token.begin, token.end, other, "operator")
        # Two arguments that are a name or a number each, swapped.
        if token.kind == "word" and following is not None and following.text == "(" \
                and i + 5 < len(tokens) and tokens[i + 3].text == "," \
                and tokens[i + 5].text in (",", ")") \
                and all(tokens[j].kind in ("word", "number", "string", "char") for j in (i + 2, i + 4)):
            first, second = tokens[i + 2], tokens[i + 4]
            if first.text != second.text:
                yield Mutant(first.begin, second.end,
                             second.text + text[first.end:second.begin] + first.text, "swapped")
    for first, end in statements_of(tokens):
        if first in alone:
            continue
        statement = text[tokens[first].begin:tokens[end].end]
        yield Mutant(tokens[first].begin, tokens[end].end, ";", "call dropped")
        yield Mutant(tokens[first].begin, tokens[end].end, f"{statement} {statement}", "call doubled")

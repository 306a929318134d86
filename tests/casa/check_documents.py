#!/usr/bin/env python3
"""Checks the documents: relative links of every *.md file lead to a file, and to a heading where they
name one; docs/database.md tells every table and column of sqlite/schema.sql, and nothing else.

Usage: check_documents.py ROOT
Names every fault; exit code 1 when there is one.
"""

import re
import sqlite3
import sys
from pathlib import Path
from urllib.parse import unquote

LINK = re.compile(r"\[[^\]]*\]\(\s*<?([^)\s>]+)>?[^)]*\)")
ELSEWHERE = re.compile(r"[a-z][a-z0-9+.-]*:", re.IGNORECASE)
FENCE = re.compile(r"^\s*(```|~~~)")
HEADING = re.compile(r"#+ +(.*?)(?: +#+)? *$")
COLUMN = re.compile(r"\| *`(\w+)` *\|")
RELATION = re.compile(r"^ +(\w+) [|}o]{2}--[|{o]{2} (\w+) :", re.MULTILINE)


def documents(root):
    for entry in sorted(root.iterdir()):
        if not entry.name.startswith(".") and entry.name not in ("build", "out"):
            yield from sorted(entry.rglob("*.md")) if entry.is_dir() else \
                [entry] if entry.suffix == ".md" else []


def prose(path):
    """(number, line) of the lines outside code blocks."""
    fence = None
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = FENCE.match(line)
        if match is not None and fence in (None, match[1]):
            fence = match[1] if fence is None else None
        elif fence is None:
            yield number, line


def anchors(path):
    """The names that links give to a document's headings."""
    seen = {}
    for _, line in prose(path):
        match = HEADING.match(line)
        if match is not None:
            name = re.sub(r"[^\w\- ]", "", match[1].lower()).replace(" ", "-")
            count = seen.get(name, -1) + 1
            seen[name] = count
            yield name if count == 0 else f"{name}-{count}"


def link_faults(root, path):
    """(links seen, faults)"""
    links = 0
    faults = []
    for number, line in prose(path):
        for target in LINK.findall(re.sub(r"`[^`]*`", "", line)):
            if ELSEWHERE.match(target):
                continue
            links += 1
            file, _, anchor = target.partition("#")
            place = f"{path.relative_to(root).as_posix()}:{number}: {target}"
            other = (path.parent / unquote(file)).resolve() if file else path
            if not other.exists():
                faults.append(f"{place}: leads nowhere")
            elif not other.is_relative_to(root):
                faults.append(f"{place}: leads out of the project")
            elif anchor and anchor not in set(anchors(other)):
                faults.append(f"{place}: there is no such heading")
    return links, faults


def schema_tables(root):
    db = sqlite3.connect(":memory:")
    db.executescript((root / "sqlite/schema.sql").read_text(encoding="utf-8"))
    names = [row[0] for row in db.execute("SELECT name FROM sqlite_master WHERE type = 'table'")]
    return {name: [row[1] for row in db.execute(f"PRAGMA table_info({name})")] for name in names}


def told_tables(path):
    """The tables that are headings of the third level, with the columns listed below each."""
    tables = {}
    columns = None
    for _, line in prose(path):
        if line.startswith("#"):
            match = re.fullmatch(r"### (\w+)", line)
            columns = tables.setdefault(match[1], []) if match is not None else None
        elif columns is not None and (match := COLUMN.match(line)) is not None:
            columns.append(match[1])
    return tables


def database_faults(root):
    name = "docs/database.md"
    tables = schema_tables(root)
    told = told_tables(root / name)
    for table in tables.keys() - told.keys():
        yield f"{name}: does not tell the table {table}"
    for table in told.keys() - tables.keys():
        yield f"{name}: tells {table}, which is no table"
    for table in tables.keys() & told.keys():
        for column in tables[table]:
            if told[table].count(column) != 1:
                yield f"{name}: tells {table}.{column} {told[table].count(column)} times"
        for column in told[table]:
            if column not in tables[table]:
                yield f"{name}: tells {table}.{column}, which is no column"
    for names in RELATION.findall((root / name).read_text(encoding="utf-8")):
        for table in names:
            if table not in tables:
                yield f"{name}: the diagram has {table}, which is no table"


def main(root):
    faults = sorted(database_faults(root))
    links = files = 0
    for path in documents(root):
        files += 1
        seen, bad = link_faults(root, path)
        links += seen
        faults += bad
    if links == 0:
        faults.append(f"{root}: no links found")
    for fault in faults:
        print(fault)
    print(f"{files} documents, {links} links, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(Path(sys.argv[1]).resolve()))

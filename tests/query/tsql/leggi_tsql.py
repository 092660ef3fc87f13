"""Reads texts of SQL Server's dialect with a parser of that dialect, and tells what it finds.

Standard input: texts, each ended by the byte 1E. Standard output: for each an answer, ended by the byte 1E: "no"
and why the server would refuse it, or "si" and the same query in the neutral notation, as the parser's tree says
it; between the two parts the byte 1F.

What the tree cannot hide is checked on top of the grammar: one statement only, no ORDER BY in a sub-select without
TOP, no True or False, no # in a value, dates that are dates.
"""

import datetime
import sys

from sqlfluff.core import FluffConfig, Linter


class Refused(Exception):
    pass


def significant(segment):
    """The children that are no blanks, remarks or marks of indentation."""
    return [child for child in segment.segments if child.is_code and not child.is_meta]


def leaves(segment):
    if not segment.segments:
        return [] if not segment.is_code or segment.is_meta else [segment.raw]
    return [leaf for child in segment.segments for leaf in leaves(child)]


def date_of(arguments):
    """«DATETIME , 'y-m-d 00:00:00' , 102» as a date literal between two #."""
    kind, comma, text, second, style = arguments
    if (kind.upper(), comma, second, style) != ("DATETIME", ",", ",", "102"):
        raise Refused("CONVERT of another kind")
    day, _, time = text.strip("'").partition(" ")
    try:
        year, month, number = (int(part) for part in day.split("-"))
        return f"#{datetime.date(year, month, number):%Y-%m-%d}#" if time == "00:00:00" else ""
    except ValueError as error:
        raise Refused(f"no date: {text}") from error


def neutral_function(segment):
    name, arguments = significant(segment)[0].raw.upper(), leaves(significant(segment)[1])[1:-1]
    if name == "CONVERT":
        return date_of(arguments)
    if name == "DATEDIFF":
        if arguments[0].lower() != "day":
            raise Refused(f"DATEDIFF by {arguments[0]}")
        rest = "".join(neutral(part) for part in significant(segment)[1].segments[3:])
        return "datediff('d'" + rest[rest.index(","):]
    return None


def neutral(segment):
    if segment.is_type("select_clause_modifier"):
        words = [leaf.upper() for leaf in leaves(segment)]
        if words == ["TOP", "100", "PERCENT"]:
            return ""
    if segment.is_type("function"):
        told = neutral_function(segment)
        if told is not None:
            return told
    if segment.is_type("column_reference") and segment.raw.startswith("#"):
        raise Refused("a temporary table where a value should be")
    if not segment.segments and segment.raw.upper() in ("TRUE", "FALSE"):
        raise Refused("True and False are no words of this dialect")
    if not segment.segments:
        return "" if segment.is_meta else segment.raw
    return "".join(neutral(child) for child in segment.segments)


def check_order(segment, depth=0):
    if segment.is_type("select_statement"):
        kinds = {child.type for child in segment.segments}
        words = [leaf.upper() for child in segment.segments[0].segments if child.is_type("select_clause_modifier")
                 for leaf in leaves(child)]
        if depth > 0 and "orderby_clause" in kinds and "TOP" not in words:
            raise Refused("ORDER BY in a sub-select without TOP")
        depth += 1
    for child in segment.segments or ():
        check_order(child, depth)


def read(linter, text):
    parsed = linter.parse_string(text)
    if parsed.violations:
        raise Refused(parsed.violations[0].desc())
    statements = list(parsed.tree.recursive_crawl("statement", recurse_into=False))
    if len(statements) != 1:
        raise Refused(f"{len(statements)} statements")
    check_order(statements[0])
    return neutral(statements[0])


def main():
    linter = Linter(config=FluffConfig(overrides={"dialect": "tsql"}))
    for text in sys.stdin.read().split("\x1e")[:-1]:
        try:
            answer = "si\x1f" + read(linter, text)
        except Refused as refused:
            answer = f"no\x1f{refused}"
        sys.stdout.write(answer + "\x1e")


if __name__ == "__main__":
    main()

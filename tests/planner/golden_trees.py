# SPDX-License-Identifier: Apache-2.0
"""The format of the files in plan_trees/: problems, and below them the tree that `qfftf-plan` prints for each.

    r2hc 2,4..6 batch=3,8 [inplace]:
    r2r r2hc {n} *{b}:{n}:{n}{=}
        r2hc_direct > r2hc_direct  aux {24n+24}

A heading ends with a colon and stands for every combination of its numbers, with and without words in brackets. In it
and in the tree {24n+24} is what it says for each problem: n and m are its sizes, b the batch, t the threads, n/2 is
rounded down, bn a product, and {=} is " =" in place. What no such term tells has a letter of its own and a column of a
table, which then holds the problems, too; 11*2 are the radices 11 and 2.

    c2c {n}:
    c2c- {n}
        c2c_1d_sve > 1d_two_stages_sve {p}  buffer {8n}  aux {8n+328}
    | n p ;
    | 22 11*2, 25 5*5

Blank lines separate entries, # begins a comment. A new problem is a heading alone.
"""
import itertools
import math
import re
import textwrap

WIDTH = 120
PARAMETERS = {"batch": "b", "threads": "t", "istride": "i", "ostride": "o", "idist": "j", "odist": "k"}
MAIN = "nmbt"  # the others are terms of these if they can
COLUMNS = "pqrsuvwxyzacdefgh"  # letters of what tables tell
HOLE = re.compile(r"\{([^}]*)\}")

# --- terms: a number as a function of those of the problem ----------------------------------------------------------

TERM = re.compile(r"(\d*)([a-z]+)(/2)?([+-]\d+)?")
FACTORS = ("n", "m", "b", "t", "n/2", "m/2", "bn", "mn", "bm")


def factor_of(letters, half, values):
    value = math.prod(values[letter] for letter in letters)
    return value // 2 if half else value


def value_of(term, values):
    """What a term stands for, as text."""
    if isinstance(values.get(term), str):
        return values[term]
    scale, letters, half, added = TERM.fullmatch(term).groups()
    return str(int(scale or 1) * factor_of(letters, half, values) + int(added or 0))


def filled(text, values):
    return HOLE.sub(lambda hole: value_of(hole[1], values), text)


def term_for(numbers, members):
    """The plainest term whose value is the number in every member, or None."""
    found = []
    names = [name for name, value in members[0].items() if isinstance(value, int)]
    for factor in [*FACTORS, *(name for name in names if name not in FACTORS)]:
        letters, _, half = factor.partition("/")
        if not set(letters) <= set(names):
            continue
        x = [factor_of(letters, half, values) for values in members]
        other = next((i for i, value in enumerate(x) if value != x[0]), None)
        if other is None:
            continue
        scale, rest = divmod(numbers[other] - numbers[0], x[other] - x[0])
        added = numbers[0] - scale * x[0]
        if rest or scale < 1 or any(scale * value + added != number for value, number in zip(x, numbers)):
            continue
        if len(set(x)) == 2 and added and scale > 1 and scale % 4:
            continue  # a line through two points that means nothing
        text = f"{scale if scale > 1 else ''}{factor}{f'{added:+}' if added else ''}"
        found.append((added != 0, scale != 1, abs(added), len(found), text))
    return min(found, default=(None,))[-1]


# --- reading --------------------------------------------------------------------------------------------------------

def read_entries(text):
    """The pairs of problem and tree that a file holds; the tree is empty where it holds none yet."""
    for paragraph in re.split(r"\n\s*\n", text):
        lines = [line for line in paragraph.splitlines() if not line.startswith("#")]
        headings, broken = [], ""
        while lines and (broken or not headings or lines[0].endswith((":", ","))):
            broken += (" " if broken and not broken.endswith(",") else "") + lines.pop(0).strip()
            if broken.endswith(":"):
                headings.append(broken[:-1])
                broken = ""
        tree = "\n".join(line for line in lines if not line.startswith("| "))
        table = " ".join(line[2:] for line in lines if line.startswith("| "))
        for heading in headings:
            yield from read_heading(heading, tree, table)


def read_heading(heading, tree, table):
    if "[inplace]" in heading:
        yield from read_heading(heading.replace(" [inplace]", ""), tree.replace("{=}", ""), table)
        yield from read_heading(heading.replace("[inplace]", "inplace"), tree.replace("{=}", " ="), table)
        return
    pattern, members = read_table(heading, table) if table else read_numbers(heading)
    for values in members:
        yield filled(pattern, values), filled(tree, values)


def read_numbers(heading):
    pattern, sets = split_words(heading)
    return pattern, [dict(zip(sets, numbers)) for numbers in itertools.product(*map(numbers_of, sets.values()))]


def read_table(heading, table):
    names, rows = table.split(" ; ")
    return heading, [{name: text.replace("*", " ") if "*" in text else int(text)
                      for name, text in zip(names.split(), row.split(), strict=True)} for row in rows.split(", ")]


def numbers_of(text):
    result = []
    for piece in text.split(","):
        first, _, last = piece.partition("..")
        result += range(int(first), int(last or first) + 1)
    return result


def split_words(words):
    """The problem with its numbers as {n}, {b} and so on, and these numbers as texts."""
    kind, sizes, *rest = words.split()
    values = {}
    if sizes.count("x") < 2 and "{" not in sizes:
        values = dict(zip("nm", sizes.split("x")))
        sizes = "x".join(f"{{{name}}}" for name in values)
    for i, word in enumerate(rest):
        name, _, number = word.partition("=")
        if name in PARAMETERS and "{" not in number:
            values[PARAMETERS[name]] = number
            rest[i] = f"{name}={{{PARAMETERS[name]}}}"
    return " ".join([kind, sizes, *rest]), values


# --- writing --------------------------------------------------------------------------------------------------------

RADICES = re.compile(r"(?m)^( +\S+ > \S+)((?: \d+)+)")
NUMBER = re.compile(r"<[\d*]+>|(?<![A-Za-z0-9_])\d+(?=x\d|[^A-Za-z0-9_]|$)|(?<=\dx)\d+(?=x\d|[^A-Za-z0-9_]|$)", re.M)


def write_entries(trees):
    """The text of (problem, tree) pairs: those that differ in numbers alone become one entry."""
    groups = {}
    for words, tree in trees:
        pattern, values = split_words(words)
        rest, numbers = numbers_taken_out(tree)
        member = tuple((name, int(value)) for name, value in values.items())
        groups.setdefault((pattern, rest), {})[member] = numbers
    join_in_place(groups)
    return "\n\n".join(entry_text(*key, members) for key, members in groups.items()) + "\n"


def numbers_taken_out(tree):
    """The pieces of the tree between its numbers, and the numbers; the radices of a chain are one."""
    marked = RADICES.sub(lambda match: f"{match[1]} <{match[2].strip().replace(' ', '*')}>", tree)
    return tuple(NUMBER.split(marked)), tuple(number.strip("<>") for number in NUMBER.findall(marked))


def join_in_place(groups):
    """Makes one group of two that differ in the word inplace and in where their trees say so."""
    for pattern, rest in list(groups):
        if " inplace" not in pattern:
            continue
        for other in [key for key in groups if key[0] == pattern.replace(" inplace", "", 1)]:
            joined = with_and_without(other[1], rest)
            if joined and groups[other] == groups[pattern, rest]:
                both = pattern.replace("inplace", "[inplace]"), joined
                members = groups.pop((pattern, rest))
                for key in list(groups):  # the new entry takes the place of the one out of place
                    value = groups.pop(key)
                    groups[both if key == other else key] = members if key == other else value
                break


def with_and_without(out_of_place, in_place):
    """The pieces of a tree in place with {=} wherever those of the tree out of place have nothing, if that is all."""
    joined = []
    for a, b in itertools.zip_longest(out_of_place, in_place, fillvalue=""):
        lines = [with_and_without_line(x, y) for x, y in itertools.zip_longest(a.split("\n"), b.split("\n"))]
        if None in lines:
            return None
        joined.append("\n".join(lines))
    return tuple(joined) if len(out_of_place) == len(in_place) else None


def with_and_without_line(out_of_place, in_place):
    if out_of_place == in_place:
        return in_place
    return in_place[:-2] + "{=}" if in_place and in_place.endswith(" =") and in_place[:-2] == out_of_place else None


def entry_text(pattern, rest, group):
    members = [dict(member) for member in sorted(group)]
    numbers = [group[member] for member in sorted(group)]
    for name in [name for name in members[0] if name not in MAIN]:
        told = [values[name] for values in members]
        mains = [{key: value for key, value in values.items() if key in MAIN} for values in members]
        text = str(told[0]) if len(set(told)) == 1 else term_for(told, mains)
        if text:
            pattern = pattern.replace(f"{{{name}}}", text if text.isdigit() else f"<{text}>")
            members = [{key: value for key, value in values.items() if key != name} for values in members]
    columns, pieces = [], [rest[0]]
    for column, piece in zip(zip(*numbers), rest[1:]):
        pieces += [number_text(column, members, columns), piece]
    tree = "".join(pieces)
    if not columns:
        return "\n".join([*headings_of(pattern, members), tree])
    rows = [" ".join(str(value) for value in values.values()) for values in members]
    return "\n".join([heading(pattern), tree, "| " + " ".join(members[0]) + " ;", *wrapped_table(rows)])


def number_text(numbers, members, columns):
    """A number of the tree: itself, a term, or a letter that becomes a column of the members."""
    if len(set(numbers)) == 1:
        return numbers[0].replace("*", " ")
    for name in columns:
        if all(str(values[name]) == number for values, number in zip(members, numbers)):
            return f"{{{name}}}"
    radices = any("*" in number for number in numbers)
    term = None if radices else term_for([int(number) for number in numbers], members)
    if not term:
        term = COLUMNS[len(columns)]
        columns.append(term)
        for values, number in zip(members, numbers):
            values[term] = number if radices else int(number)
    return f"{{{term}}}"


def headings_of(pattern, members):
    """Headings that stand for these members and no others."""
    names = list(members[0])
    boxes = [tuple(frozenset([value]) for value in values.values()) for values in members]
    for axis in range(len(names)):
        merged = {}
        for box in boxes:
            merged.setdefault(box[:axis] + box[axis + 1:], []).append(box[axis])
        boxes = [rest[:axis] + (frozenset().union(*sets),) + rest[axis:] for rest, sets in merged.items()]
    for box in boxes:
        texts = dict(zip(names, map(text_of, box)))
        yield wrapped(heading(filled(pattern, texts)))


def heading(pattern):
    return pattern.replace("<", "{").replace(">", "}") + ":"


def text_of(numbers):
    """5,7..9 for 5, 7, 8 and 9."""
    runs = []
    for number in sorted(numbers):
        if runs and runs[-1][1] == number - 1:
            runs[-1][1] = number
        else:
            runs.append([number, number])
    return ",".join(str(a) if a == b else f"{a},{b}" if b == a + 1 else f"{a}..{b}" for a, b in runs)


def wrapped(heading):
    lines = textwrap.wrap(heading.replace(",", ", "), WIDTH, subsequent_indent="    ", break_on_hyphens=False)
    return "\n".join(line.replace(", ", ",") for line in lines)


def wrapped_table(rows):
    text = ", ".join(row.replace(" ", "\0") for row in rows)
    lines = textwrap.wrap(text, WIDTH, initial_indent="| ", subsequent_indent="| ", break_on_hyphens=False)
    return [line.replace("\0", " ") for line in lines]

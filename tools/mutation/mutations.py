"""The small changes that are possible in a source. Works on tokens, so comments, strings and includes are left alone."""

import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""
    (?P<skip>   //[^\n]* | /\*.*?\*/ | ^[ \t]*\#(?:[^\n]*\\\n)*[^\n]* | \s+ )
  | (?P<text>   (?:u8|[uUL])?R"(?P<mark>[^\s()\\]*)\(.*?\)(?P=mark)" | (?:u8|[uUL])?"(?:\\.|[^"\\])*" | '(?:\\.|[^'\\])+' )
  | (?P<number> \.?[0-9](?:[eEpP][+-]|'[0-9a-zA-Z]|[0-9a-zA-Z_.])* )
  | (?P<name>   [A-Za-z_]\w* )
  | (?P<symbol>   <=> | <<= | >>= | -> | \+\+ | -- | && | \|\| | :: | [-+*/%&|^=!<>]= | << | [^\s\w] )
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

# Only between blanks are these operators for sure; otherwise `<` can open template arguments and `-` be a prefix.
SWAPPED = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
    "+": "-", "-": "+", "+=": "-=", "-=": "+=", "&&": "||", "||": "&&",
}
SWAPPED_ANYWHERE = {"++": "--", "--": "++"}
SWAPPED_NAMES = {"true": "false", "false": "true"}

# Without these the rest would not compile, or a function would end without its value.
NOT_DROPPED = {
    "using", "namespace", "class", "struct", "enum", "union", "template", "typedef", "friend", "static", "constexpr",
    "const", "auto", "inline", "extern", "explicit", "virtual", "static_assert", "public", "private", "protected", "if",
    "for", "while", "do", "switch", "case", "default", "else", "return", "operator", "try", "catch",
}


@dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclass(frozen=True)
class Mutation:
    """A change of one source: the text from start to end becomes new."""

    file: str
    start: int
    end: int
    line: int
    old: str
    new: str

    def applied(self, source):
        return source[: self.start] + self.new + source[self.end :]

    def change(self):
        return f"{brief(self.old)} -> {brief(self.new) if self.new != ';' else '(dropped)'}"

    def __str__(self):
        return f"{self.file}:{self.line}: {self.change()}"


def brief(text):
    text = " ".join(text.split())
    return text if len(text) <= 100 else text[:97] + "..."


def tokens_of(source):
    return [
        Token(match.lastgroup if match.lastgroup != "mark" else "text", match.group(), match.start())
        for match in TOKEN.finditer(source)
        if match.group("skip") is None
    ]


def neighbors(number):
    """The numbers one above and one below, in the way that the number is written."""
    match = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9][0-9']*)([uUlLzZ]*)|([0-9]+\.[0-9]*)([fFlL]?)", number)
    if not match:
        return []
    whole, suffix, fraction, fraction_suffix = match.groups()
    if fraction:
        return [f"{float(fraction) + step}{fraction_suffix}" for step in (1, -1) if float(fraction) + step >= 0]
    value = int(whole.replace("'", ""), 16 if whole[:2] in ("0x", "0X") else 10)
    return [f"{value + step}{suffix}" for step in (1, -1) if value + step >= 0]


def token_changes(source, tokens):
    for previous, token in zip([None] + tokens, tokens):
        if previous and previous.text in ("operator", "template"):
            continue
        if previous and previous.kind == "text" and token.text in ("+", "-"):
            continue  # joins texts
        spaced = source[token.start - 1].isspace() and source[token.end : token.end + 1].isspace()
        if token.kind == "number":
            for new in neighbors(token.text):
                yield token.start, token.end, new
        elif token.kind == "name" and token.text in SWAPPED_NAMES:
            yield token.start, token.end, SWAPPED_NAMES[token.text]
        elif token.text in SWAPPED_ANYWHERE:
            yield token.start, token.end, SWAPPED_ANYWHERE[token.text]
        elif token.text in SWAPPED and spaced:
            yield token.start, token.end, SWAPPED[token.text]


def closing(tokens, opened):
    """The index of the bracket that closes the one at `opened`, None when there is none."""
    depth = 0
    for index in range(opened, len(tokens)):
        if tokens[index].text in ("(", "[", "{"):
            depth += 1
        elif tokens[index].text in (")", "]", "}"):
            depth -= 1
            if depth == 0:
                return index
    return None


def negations(source, tokens):
    for index, token in enumerate(tokens[:-1]):
        if token.text not in ("if", "while") or tokens[index + 1].text != "(":
            continue
        end = closing(tokens, index + 1)
        if end is None:
            continue
        inside = tokens[index + 2 : end]
        parts = [number for number, part in enumerate(inside) if part.text == ";"]
        condition = inside[parts[-1] + 1 :] if parts else inside
        symbols = [part.text for part in condition if part.text in ("&&", "||", "?", "==", "!=")]
        if condition and symbols not in (["=="], ["!="]):  # where swapping the operator is the same
            start, stop = condition[0].start, condition[-1].end
            yield start, stop, f"!({source[start:stop]})"


def is_declaration(statement):
    """Two names in a row, at most with * or & between them, and no assignment or call first."""
    for previous, token in zip(statement, statement[1:]):
        if previous.text in ("=", "(", "[", "{"):
            return False
        if token.kind == "name" and (previous.kind == "name" or previous.text in (">", "&", "*")):
            return True
    return False


def drops(tokens):
    brackets = []
    for index, token in enumerate(tokens):
        if token.text in ("(", "[", "{"):
            brackets.append(token.text)
        elif token.text in (")", "]", "}") and brackets:
            brackets.pop()
        if brackets and brackets[-1] != "{":
            continue
        previous = tokens[index - 1].text if index else ";"
        if previous not in (";", "{", "}", ")", "else", ":") or token.kind != "name" and token.text not in ("++", "--", "*"):
            continue
        lone_return = token.text == "return" and tokens[index + 1 : index + 2] and tokens[index + 1].text == ";"
        if token.text in NOT_DROPPED and not lone_return:
            continue
        depth = 0
        for last in range(index, len(tokens)):
            depth += (tokens[last].text in ("(", "[", "{")) - (tokens[last].text in (")", "]", "}"))
            if depth < 0 or depth == 0 and tokens[last].text == ";":
                break
        else:
            continue
        statement = tokens[index:last]
        if any(part.text == "reserve" for part in statement):
            continue  # only allocates earlier
        if depth == 0 and statement and not is_declaration(statement):
            yield token.start, tokens[last].end, ";"


def mutations(file, source):
    """Every mutation of the source, in the order of their positions."""
    tokens = tokens_of(source)
    changes = [*token_changes(source, tokens), *negations(source, tokens), *drops(tokens)]
    return [
        Mutation(file, start, end, source.count("\n", 0, start) + 1, source[start:end], new)
        for start, end, new in sorted(set(changes))
    ]

"""Where a C++ source offers a change, and how it is rewritten so that the change can be switched on.

There is no parser: this relies on the layout that clang-format gives, such as the spaces around an operator between two
operands, which the brackets of a template do not have. Where it is wrong, most often the mutant does not compile.
"""

import collections
import re

# A rewriting puts texts around ranges of the source, in which "@" stands for the mutant's number.
Wrap = collections.namedtuple("Wrap", "start end before after")


class Site(collections.namedtuple("Site", "kind position wraps")):
    @property
    def span(self):
        return min(wrap.start for wrap in self.wraps), max(wrap.end for wrap in self.wraps)


TOKEN = re.compile(
    r"""(?:u8|[uUL])?'[^'\n]*'|(?:u8|[uUL])?"[^"\n]*"|\d(?:e-|[\w.])*|\w+|::|->|\+\+|--|&&|\|\||\.\.\.|<=>|<<=|>>="""
    r"""|[-+*/%&|^!=<>]=|<<|>>|\S"""
)
COMPARISONS = {"<": "", ">=": "", ">": "-", "<=": "-", "==": None, "!=": None}
ENDS = set("; , ? : return throw = += -= *= /= |= &= ^= << >>".split())
CONTROLS = {"if", "for", "while", "switch", "catch"}
LABELS = {"case", "default", "public", "private", "protected"}
CONSTANT = set("case constexpr concept decltype enum noexcept requires sizeof static_assert using".split())
SCOPE = re.compile(r"(inline |static |const )*(class|struct|union|enum|namespace|extern)\b")
UNDROPPABLE = re.compile(
    r"(auto|class|const|constexpr|delete|enum|extern|friend|goto|namespace|return|static|static_assert|struct|template"
    r"|typedef|union|using)\b(?!;)|[\w:]+(<.*>)?(::\w+)*[&*]* [&*]*\w"  # a declaration has two names on end
)
NUMBER = re.compile(r"(0x[\da-fA-F]+|\d+(\.\d+)?(e-?\d+)?)[uUlL]*$")


def spaces(match):
    return re.sub(r"[^\n]", " ", match[0])


def code_of(text):
    """The source with spaces in place of comments and directives, but for what macros stand for, and without what
    literals say."""
    literal = r"""//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])*'"""
    text = re.sub(
        literal, lambda m: spaces(m) if m[0][0] == "/" else m[0][0] + "_" * (len(m[0]) - 2) + m[0][0], text, flags=re.S
    )
    text = re.sub(r"^[ \t]*#[ \t]*define\s+\w+(\([^)]*\))?", lambda m: ";" + spaces(m)[1:], text, flags=re.M)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", spaces, text, flags=re.M)
    return text.replace("\\\n", " \n")


class Frame:
    """An open bracket, and where the statement in it began."""

    def __init__(self, kind, start, is_inner=False):
        self.kind = kind
        self.start = start
        self.is_inner = is_inner  # the statement around it goes on behind it
        self.has_initialisers = False


class Source:
    def __init__(self, text):
        self.code = code_of(text)
        self.matches = list(TOKEN.finditer(self.code))
        self.tokens = [match[0] for match in self.matches]
        self.sites = []
        self.scan()

    def scan(self):
        stack = [Frame("scope", 0)]
        for i, token in enumerate(self.tokens):
            frame = stack[-1]
            if token in "([":
                before = self.tokens[i - 1]
                is_control = before in CONTROLS or self.tokens[i - 2 : i] == ["if", "constexpr"]
                stack.append(Frame("control" if is_control else "(", frame.start))
                if before in ("if", "while"):
                    self.condition(i)
            elif token == "{":
                stack.append(self.brace(frame, i))
            elif token in ")]}" and len(stack) > 1:
                stack.pop()
                if frame.kind == "control" or (token == "}" and not frame.is_inner):
                    stack[-1].start = i + 1
                    stack[-1].has_initialisers = False
            elif token == ";" and frame.kind not in ("(", "control"):
                if frame.kind == "code":
                    self.statement(frame.start, i)
                frame.start = i + 1
                frame.has_initialisers = False
            elif token in ("else", "do", "try") or (token == ":" and self.tokens[frame.start] in LABELS):
                frame.start = i + 1
            elif token == ":" and frame.kind == "scope" and self.tokens[i - 1] in (")", "noexcept"):
                frame.has_initialisers = True
            else:
                self.expression(stack, i)

    def brace(self, frame, i):
        """What a brace opens: a scope, code, or a list of values."""
        before, head = self.tokens[i - 1], self.tokens[frame.start : i]
        text = re.sub(r"^template <[^()]*?> ", "", " ".join(head))
        is_nested = frame.kind in ("(", "control")
        if SCOPE.match(text) and not is_nested:
            return Frame("scope", i + 1)
        is_body = not head or before in (")", "]", "const", "noexcept", "override", "mutable") or "->" in head[-4:]
        if not is_body and not (frame.has_initialisers and before == "}"):
            return Frame("values", frame.start, is_inner=True)
        level = re.sub(r"\([^()]*\)", "", re.sub(r"\([^()]*\)", "", text))
        return Frame("code", i + 1, is_inner=is_nested or bool(re.search(r"(?<!operator) = |\breturn\b", level)))

    def reach(self, i, step, ends):
        """The last token in one direction that belongs to the operand of an operator."""
        opening, closing = (set("([{"), set(")]}"))[::step]
        depth = 0
        j = i + step
        while 0 <= j < len(self.tokens):
            token = self.tokens[j]
            if token in opening:
                depth += 1
            elif depth == 0 and (token in closing or token in ends or (token in "&|^" and self.is_binary(j))):
                break
            elif token in closing:
                depth -= 1
            j += step
        return j - step

    def is_binary(self, i):
        start, end = self.matches[i].span()
        return self.code[start - 1].isspace() and self.code[end].isspace() and self.tokens[i - 1] != "operator"

    def wrap(self, first, last, before, after):
        return Wrap(self.matches[first].start(), self.matches[last].end(), before, after)

    def add(self, kind, i, *wraps):
        self.sites.append(Site(kind, self.matches[i].start(), wraps))

    def negate(self, first, last):
        return self.wrap(first, last, "(mutants::may<@>() != bool(", "))")

    def condition(self, i):
        """The condition behind an opening bracket, unless it declares a name."""
        last = self.reach(i, 1, {})
        if self.tokens[last + 1] in "&|^":  # of which only a part would be negated
            return
        first = self.reach(last + 1, -1, {";"})
        if "=" not in self.tokens[first : last + 1] and "[" not in self.tokens[first : last + 1]:
            self.add("condition", i, self.negate(first, last))

    def statement(self, start, end):
        tokens = self.tokens[start:end]
        if not tokens or "{" in tokens or CONSTANT & set(tokens):
            return
        text = re.sub(r"\s+", " ", self.code[self.matches[start].start() : self.matches[end].end()])
        # An unguarded throw may be all that a function with a result ends with.
        if self.tokens[start - 1] == ")" if tokens[0] == "throw" else not UNDROPPABLE.match(text):
            self.add("statement", start, self.wrap(start, end, "{ if (!mutants::may<@>()) ", " }"))

    def expression(self, stack, i):
        token, before = self.tokens[i], self.tokens[i - 1]
        frame = next(f for f in reversed(stack) if f.kind in ("code", "scope"))
        words = self.tokens[frame.start : i]
        if words[:1] == ["constexpr"] or words[1:2] == ["constexpr"]:
            return self.constant(frame, i, words)
        if CONSTANT & set(words):
            return
        if frame.kind == "scope" and not frame.has_initialisers:
            is_initial = before == "=" and self.tokens[i + 1] == ";" and not {")", "static", "const"} & set(words)
            return self.literal(i) if is_initial else None
        if token in COMPARISONS and self.is_binary(i):
            self.comparison(i)
        elif token in ("&&", "||") and self.is_binary(i) and "..." not in (before, self.tokens[i + 1]):
            left = self.reach(i, -1, ENDS | ({"||"} if token == "&&" else set()))
            right = self.reach(i, 1, ENDS | {"||", token})
            parts = (left, i - 1), (i + 1, right), (left, right)  # by De Morgan's laws
            self.add("and/or", i, *(self.negate(*part) for part in parts))
        elif token == "!" and not self.is_binary(i):
            self.add("condition", i, self.wrap(i, i, "mutants::may<@>() != ", "")._replace(end=self.matches[i].start()))
        elif token == "?" and self.is_binary(i):
            self.add("condition", i, self.negate(self.reach(i, -1, ENDS), i - 1))
        else:
            self.literal(i)

    def comparison(self, i):
        ends = ENDS | {"&&", "||"}
        self.add("condition", i, self.negate(self.reach(i, -1, ends), self.reach(i, 1, ends)))
        sign = COMPARISONS[self.tokens[i]]
        if sign is not None and "'" not in self.tokens[i + 1]:
            at = self.matches[i + 1].start()
            self.add("off by one", i, Wrap(at, at, sign + "int(mutants::may<@>()) + ", ""))

    def literal(self, i, changed="changed", *others):
        token = self.tokens[i]
        start, end = self.matches[i].span()
        if self.code[start - 1] in "<.#" or self.code[end] in ">.#":  # of a template, or of a number
            return
        if token in ("true", "false"):
            self.add("constant", i, self.wrap(i, i, "(mutants::may<@>() != ", ")"), *others)
        elif token == "1" and self.tokens[i - 1] in ("+", "-") and self.is_binary(i - 1):
            self.add("off by one", i, self.wrap(i, i, "(", " - int(mutants::may<@>()))"), *others)
        elif NUMBER.match(token) or (token[-1] == "'" and len(token) > 2):
            self.add("constant", i, self.wrap(i, i, "mutants::%s<@>(" % changed, ")"), *others)

    def constant(self, frame, i, words):
        """A literal of a constant, which then is one no more. Those of classes are needed as such."""
        is_member = frame.kind == "scope" and "static" in words
        if "=" not in words or {"(", "{"} & set(words[: words.index("=")]) or is_member:
            return
        word = "const" if frame.kind == "scope" or "static" in words else "static const"
        at = i - len(words) + words.index("constexpr")
        self.literal(i, "changedConstant", self.wrap(at, at, word + " /*", "*/"))


def sites_of(text):
    return Source(text).sites


def mutated(text, mutants):
    """The source with mutants by their numbers. Ranges lie apart or within each other."""
    inserts = []
    for order, (number, site) in enumerate(mutants.items()):
        for start, end, before, after in site.wraps:
            inserts.append((start, 1, -end, order, before.replace("@", str(number))))
            if after:
                inserts.append((end, 0, -start, -order, after.replace("@", str(number))))
    parts, done = [], 0
    for position, *_, insert in sorted(inserts):
        parts += text[done:position], insert
        done = position
    return '#include "tests/mutants/switch.h"\n#line 1\n' + "".join(parts) + text[done:]

"""Where the sources can be changed, and into what. Found anew by libclang on each run."""
import json
import re
from concurrent.futures import ProcessPoolExecutor
from dataclasses import dataclass
from pathlib import Path

from clang.cindex import CursorKind as Kind
from clang.cindex import Diagnostic, Index, TranslationUnit, TypeKind

FOLDERS = ("common", "file_management", "platform/zol_common")

COMPARISONS = {
    "==": ["!="],
    "!=": ["=="],
    "<": ["<=", ">="],
    ">": [">=", "<="],
    "<=": ["<", ">"],
    ">=": [">", "<"],
}
LOGICAL = {"&&": ["||"], "||": ["&&"]}
ARITHMETIC = {"+": ["-"], "-": ["+"], "*": ["+"], "|": ["&"], "&": ["|"], "<<": [">>"], ">>": ["<<"]}

FUNCTIONS = (
    Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.FUNCTION_TEMPLATE,
    Kind.CONVERSION_FUNCTION,
)
# Children of a block that can be left out as a whole.
DROPPABLE = (
    Kind.CALL_EXPR, Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR, Kind.UNARY_OPERATOR,
    Kind.UNEXPOSED_EXPR, Kind.CXX_DELETE_EXPR, Kind.CXX_THROW_EXPR, Kind.CXX_STATIC_CAST_EXPR,
    Kind.BREAK_STMT, Kind.CONTINUE_STMT,
)
# What must stay a constant for the compiler.
CONSTANT = (
    Kind.STATIC_ASSERT, Kind.ENUM_DECL, Kind.PARM_DECL, Kind.TEMPLATE_TYPE_PARAMETER,
    Kind.TEMPLATE_NON_TYPE_PARAMETER,
)
CLASSES = (Kind.CLASS_DECL, Kind.STRUCT_DECL, Kind.CLASS_TEMPLATE)
WRAPPERS = (Kind.UNEXPOSED_EXPR, Kind.PAREN_EXPR)
INTEGERS = {
    TypeKind.CHAR_U, TypeKind.UCHAR, TypeKind.USHORT, TypeKind.UINT, TypeKind.ULONG, TypeKind.ULONGLONG,
    TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.SHORT, TypeKind.INT, TypeKind.LONG, TypeKind.LONGLONG,
}


@dataclass(frozen=True)
class Point:
    file: str  # below the project
    start: int
    end: int
    mutated: str  # the text instead of [start, end)
    drops: bool  # a statement, which is skipped instead of replaced
    cast: str
    line: int
    # what stays the same when lines move: file, function, and the line with the change marked in it
    key: str


class Source:
    def __init__(self, root, name):
        self.name = name
        self.text = (root / name).read_bytes().decode("latin-1")
        self.points = {}
        self.unlocked = {}  # constants of the compiler that become constants of the program
        self.left_out = 0

    def add(self, function, start, end, mutated, drops=False, cast=""):
        original = self.text[start:end]
        if original.count("(") != original.count(")") or not original:
            self.left_out += 1
            return
        line = self.text.count("\n", 0, start) + 1
        before = self.text[self.text.rfind("\n", 0, start) + 1:start]
        after = self.text[end:self.text.find("\n", end)]
        marked = " ".join(f"{before}{{{{{original} => {mutated}}}}}{after}".split())
        point = Point(self.name, start, end, mutated, drops, cast, line, f"{self.name} {function}: {marked}")
        self.points.setdefault((start, end, mutated, drops), point)


def one_line(text):
    return " ".join(re.sub(r"//[^\n]*", "", text).split())


class Finder:
    """Collects the points of one file from what stands in it at the top of a translation unit."""

    def __init__(self, source, cursors):
        self.source = source
        self.text = source.text
        self.macros = [(c.extent.start.offset, c.extent.end.offset, c.spelling)
                       for c in cursors if c.kind == Kind.MACRO_INSTANTIATION]
        self.function = ""
        self.returns_reference = False
        for cursor in cursors:
            if cursor.kind != Kind.MACRO_INSTANTIATION:
                self.visit(cursor, None, False)

    def in_macro(self, cursor):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        return next((m for m in self.macros if m[0] <= start and end <= m[1]), None)

    def add(self, cursor, mutated, drops=False, cast=""):
        self.source.add(self.function, cursor.extent.start.offset, cursor.extent.end.offset, mutated, drops, cast)

    def original(self, cursor):
        return one_line(self.text[cursor.extent.start.offset:cursor.extent.end.offset])

    def visit(self, cursor, parent, constant):
        macro = self.in_macro(cursor)
        if macro is not None:
            if macro[2].startswith("ZOL_"):
                self.visit_log_statement(*macro[:2])
            return
        outer = self.function
        if cursor.kind in FUNCTIONS:
            scope = cursor.semantic_parent.spelling if cursor.semantic_parent is not None else ""
            is_member = cursor.kind not in (Kind.FUNCTION_DECL,) and scope
            self.function = f"{scope}::{cursor.spelling}" if is_member else cursor.spelling
            self.returns_reference = cursor.result_type.kind == TypeKind.LVALUEREFERENCE
        elif cursor.kind in (Kind.FIELD_DECL, Kind.VAR_DECL) and not self.function:
            self.function = cursor.spelling
        constant = constant or self.is_constant(cursor)
        if constant:
            self.count_constants(cursor)
        else:
            self.mutate(cursor, parent)
        for child in cursor.get_children():
            self.visit(child, cursor, constant or self.is_for_compiler(cursor, child))
        self.function = outer

    def is_constant(self, cursor):
        if cursor.kind in CONSTANT:
            return True
        if cursor.kind != Kind.VAR_DECL and cursor.kind not in FUNCTIONS:
            return False
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        head = self.text[start:end].split("{")[0].split("=")[0]
        if "constinit" in head or cursor.kind in FUNCTIONS and "constexpr" in head:
            return True
        if "constexpr" in head and cursor.semantic_parent.kind in CLASSES:
            # as a variable it would be a unique symbol, which keeps its library from being unloaded
            return True
        if "constexpr" in head:
            at = start + head.index("constexpr")
            self.source.unlocked[(at, at + len("constexpr"))] = "const"
        return False

    @staticmethod
    def is_for_compiler(cursor, child):
        """A label of a switch, or an argument in the type of a variable."""
        if cursor.kind in (Kind.VAR_DECL, Kind.FIELD_DECL):
            return child.extent.start.offset < cursor.location.offset
        return cursor.kind == Kind.CASE_STMT and child == next(cursor.get_children())

    def count_constants(self, cursor):
        if cursor.kind in (Kind.INTEGER_LITERAL, Kind.STRING_LITERAL, Kind.CHARACTER_LITERAL,
                           Kind.CXX_BOOL_LITERAL_EXPR, Kind.BINARY_OPERATOR):
            self.source.left_out += 1

    def visit_log_statement(self, start, end):
        self.source.add(self.function, start, end, "", True)
        inside = re.finditer(r'"(?:[^"\\]|\\.)*"|\b\d+\b', self.text[start:end])
        first_line = self.text.rfind("\n", 0, start) + 1
        if self.text[first_line:start].lstrip().startswith("#"):
            return
        for match in inside:
            literal = match.group()
            mutated = '""' if literal.startswith('"') else str(int(literal) + 1)
            if literal != '""':
                self.source.add(self.function, start + match.start(), start + match.end(), mutated)

    def mutate(self, cursor, parent):
        kind = cursor.kind
        children = list(cursor.get_children())
        if parent is not None and kind in DROPPABLE and self.is_statement(cursor, parent):
            self.add(cursor, "", True)
        if kind == Kind.RETURN_STMT:
            self.mutate_return(cursor, parent, children)
        elif kind in (Kind.IF_STMT, Kind.WHILE_STMT):
            self.mutate_condition(children)
        elif kind == Kind.CONDITIONAL_OPERATOR:
            self.negate(children[0])
        elif kind in (Kind.BINARY_OPERATOR, Kind.CALL_EXPR):
            self.mutate_operator(cursor, children)
        elif kind == Kind.UNARY_OPERATOR:
            self.mutate_unary(cursor, children)
        elif kind == Kind.VAR_DECL and children and cursor.type.kind == TypeKind.BOOL:
            self.negate(children[-1])
        elif kind in (Kind.INTEGER_LITERAL, Kind.CHARACTER_LITERAL, Kind.STRING_LITERAL,
                      Kind.CXX_BOOL_LITERAL_EXPR):
            self.mutate_literal(cursor, parent)

    @staticmethod
    def is_statement(cursor, parent):
        if parent.kind == Kind.COMPOUND_STMT:
            return True
        children = list(parent.get_children())
        return parent.kind in (Kind.CASE_STMT, Kind.DEFAULT_STMT) and children[-1] == cursor

    def mutate_return(self, cursor, parent, children):
        if not children:
            self.add(cursor, "", True)
            return
        value = children[0]
        bare = value
        while bare.kind in WRAPPERS and len(list(bare.get_children())) == 1:
            bare = next(bare.get_children())
        kind = value.type.get_canonical().kind
        literals = (Kind.INTEGER_LITERAL, Kind.STRING_LITERAL, Kind.CXX_BOOL_LITERAL_EXPR, Kind.INIT_LIST_EXPR,
                    Kind.CXX_NULL_PTR_LITERAL_EXPR, Kind.LAMBDA_EXPR)
        if bare.kind in literals or self.returns_reference or self.text[value.extent.start.offset] in "-{":
            return
        if kind == TypeKind.BOOL:
            self.negate(value)
        elif kind in INTEGERS:
            type_name = value.type.get_canonical().spelling
            for code in ("0", "-1") if kind == TypeKind.INT else ("0", "1"):
                if not (code == "0" and self.original(value) == "ZolReturnOk"):  # which it is
                    self.add(value, code, cast=type_name)
        elif kind == TypeKind.POINTER:
            self.add(value, "nullptr")
        elif kind == TypeKind.RECORD:
            self.add(value, f"std::decay_t<decltype({self.original(value)})>{{}}")

    def mutate_condition(self, children):
        body = next(i for i, child in enumerate(children) if child.kind == Kind.COMPOUND_STMT)
        condition = children[body - 1]
        declared = children[0]
        if declared.kind != Kind.VAR_DECL:
            self.negate(condition)
            return
        value = list(declared.get_children())[-1]
        if declared.extent.start.offset <= condition.extent.start.offset < declared.extent.end.offset:
            self.add(value, f"std::decay_t<decltype({self.original(value)})>{{}}")

    def operator_of(self, left, right):
        between = self.text[left.extent.end.offset:right.extent.start.offset]
        return between.strip(), left.extent.end.offset + len(between) - len(between.lstrip())

    def operands(self, cursor, children):
        """The two sides of an operator, built in or not, and the operator; nothing for anything else."""
        if cursor.kind == Kind.BINARY_OPERATOR and len(children) == 2:
            left, right = children
        elif cursor.kind == Kind.CALL_EXPR and len(children) == 3 and cursor.spelling.startswith("operator"):
            left, _, right = children
        else:
            return None
        operator, at = self.operator_of(left, right)
        return left, right, operator, at

    def mutate_operator(self, cursor, children):
        found = self.operands(cursor, children)
        if found is None:
            return
        left, right, operator, at = found
        if operator in LOGICAL:
            self.negate(left)
            self.negate(right)
        alternatives = COMPARISONS.get(operator) or LOGICAL.get(operator)
        if alternatives is None and cursor.type.get_canonical().kind in INTEGERS | {TypeKind.POINTER}:
            alternatives = ARITHMETIC.get(operator)
        for other in alternatives or []:
            start, end = left.extent.start.offset, right.extent.end.offset
            mutated = self.text[start:at] + other + self.text[at + len(operator):end]
            self.source.add(self.function, start, end, one_line(mutated))

    def mutate_unary(self, cursor, children):
        start = cursor.extent.start.offset
        text = self.text[start:cursor.extent.end.offset]
        if text.startswith("!") and not text.startswith("!="):
            self.add(cursor, f"static_cast<bool>({self.original(children[0])})")
        # what else becomes of a negative number comes by its digits
        if text.startswith("-") and children[0].kind == Kind.INTEGER_LITERAL and text != "-1":
            self.add(cursor, "0")

    def negate(self, cursor):
        """The opposite of a condition, unless that comes by its operators."""
        bare = cursor
        children = list(bare.get_children())
        while bare.kind in WRAPPERS and len(children) == 1:
            bare = children[0]
            children = list(bare.get_children())
        text = self.original(cursor)
        # an operator that the compiler rewrote starts in the middle of its expression
        rewritten = bare.kind == Kind.UNARY_OPERATOR and self.text[bare.extent.start.offset:].startswith("!=")
        found = self.operands(bare, children)
        if rewritten or found is not None and (found[2] in COMPARISONS or found[2] in LOGICAL):
            return
        if text.startswith("!") or bare.kind in (Kind.CXX_BOOL_LITERAL_EXPR, Kind.INTEGER_LITERAL):
            return
        self.add(cursor, f"!({text})", cast="bool")

    def mutate_literal(self, cursor, parent):
        text = self.text[cursor.extent.start.offset:cursor.extent.end.offset]
        if cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR:
            self.add(cursor, "false" if text == "true" else "true")
        elif cursor.kind == Kind.CHARACTER_LITERAL:
            self.add(cursor, r"'\x01'")
        elif cursor.kind == Kind.STRING_LITERAL:
            self.add(cursor, '""' if text != '""' else '"mutant"')
        else:
            self.mutate_integer(cursor, parent, text)

    def mutate_integer(self, cursor, parent, text):
        digits = text.rstrip("uUlL").replace("'", "")
        if not re.fullmatch(r"0x[0-9a-fA-F]+|\d+", digits):
            self.source.left_out += 1
            return
        target = parent.type.get_canonical() if parent.kind == Kind.UNEXPOSED_EXPR else cursor.type
        if target.kind not in INTEGERS:
            self.source.left_out += 1
            return
        octal = len(digits) > 1 and digits.isdigit() and digits.startswith("0")
        value = int(digits, 8 if octal else 0)
        for other in [value + 1] + ([0] if value == 1 else []):
            self.add(cursor, f"0{other:o}" if octal else str(other), cast=target.spelling)


def points_of_unit(root, entry):
    """The component's or its companion's source of that command with the headers that it includes."""
    arguments = [a for a in entry["command"].split() if a.startswith(("-I", "-D", "-std"))]
    words = entry["command"].split()
    arguments += [f"-isystem{after}" for before, after in zip(words, words[1:]) if before == "-isystem"]
    unit = Index.create().parse(entry["file"], arguments,
                                options=TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
    errors = [d for d in unit.diagnostics if d.severity >= Diagnostic.Error]
    if errors:
        raise SystemExit(f"{entry['file']} can't be read: {errors[0]}")
    folders = tuple(f"{root}/{folder}/" for folder in FOLDERS)
    cursors = {}
    for cursor in unit.cursor.get_children():
        file = cursor.location.file
        if file is not None and file.name.startswith(folders):
            cursors.setdefault(file.name, []).append(cursor)
    sources = []
    for file, of_file in cursors.items():
        sources.append(Source(root, str(Path(file).relative_to(root))))
        Finder(sources[-1], of_file)
    return sources


def find_points(root, database, jobs):
    """All points of the component and its companion by file, from the commands of a compilation database."""
    entries = {}
    for entry in json.loads(Path(database).read_text()):
        if entry["file"].startswith(tuple(f"{root}/{folder}/" for folder in FOLDERS)):
            entries[entry["file"]] = entry
    with ProcessPoolExecutor(jobs) as pool:
        found = list(pool.map(points_of_unit, [root] * len(entries), entries.values()))
    sources = {}
    for source in (source for sources_of_unit in found for source in sources_of_unit):
        sources.setdefault(source.name, source)
    return sources

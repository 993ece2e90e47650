#!/usr/bin/env python3
"""Checks what `cmake --install` puts in front of a host.

  check_installed.py headers BUILD_DIR   only the headers listed as public are installed, none from a
                                         private/ folder, and they include only installed headers
  check_installed.py symbols BUILD_DIR   every symbol an installed library exports is declared in an
                                         installed header, and each exported class carries its
                                         library's export macro; besides them only what the compiler
                                         makes of them (type info, virtual tables, thunks), what Qt's
                                         moc adds to their QObjects, and weak instantiations of
                                         templates of the standard library, Boost and Qt

Each run installs the build into a temporary prefix of its own (two runs of the suite may share one
build tree). Exit code 0 when everything holds, 1 with one line per problem otherwise.
"""

import os
import re
import subprocess
import sys
import tempfile

CMAKE = os.environ.get("CMAKE_COMMAND", "cmake")
NM = os.environ.get("NM", "nm")


def install(build_dir, prefix):
    subprocess.run([CMAKE, "--install", build_dir, "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL)


def installed_headers(prefix):
    root = os.path.join(prefix, "include")
    headers = []
    for folder, _, files in os.walk(root):
        for name in files:
            headers.append(os.path.relpath(os.path.join(folder, name), root))
    return sorted(headers)


def check_headers(build_dir, prefix):
    with open(os.path.join(build_dir, "vorn-public-headers.txt")) as listed:
        public = {"vorn/" + line.strip() for line in listed if line.strip()}
    problems = []
    headers = installed_headers(prefix)
    for header in headers:
        if "/private/" in "/" + header:
            problems.append(f"{header}: a private header is installed")
        elif header not in public:
            problems.append(f"{header}: installed, but not listed as public (vorn_public_headers)")
    for header in sorted(public - set(headers)):
        problems.append(f"{header}: listed as public, but not installed")
    include = re.compile(r'^\s*#\s*include\s*[<"](vorn/[^>"]+)[>"]', re.M)
    for header in headers:
        with open(os.path.join(prefix, "include", header), encoding="utf-8") as text:
            for target in include.findall(text.read()):
                if target not in headers:
                    problems.append(f"{header}: includes {target}, which is not installed")
    return problems, f"{len(headers)} headers installed, all public"


# --- What the installed headers declare -------------------------------------------------------------

def without_comments(text):
    text = re.sub(r"/\*.*?\*/", " ", text, flags=re.S)
    text = re.sub(r"//[^\n]*", " ", text)
    return re.sub(r'"(?:\\.|[^"\\])*"', '""', text)


class Declarations:
    """Classes (with whether they carry an export macro) and the names each header declares."""

    CLASS = re.compile(
        r"\b(?:class|struct)\s+((?:[A-Z][A-Z0-9_]*\s+)*)([A-Za-z_]\w*)\s*(?:final\s*)?(?::[^;{}()]*)?\{")
    EXPORT = re.compile(r"\bVORN_[A-Z0-9_]+_API\b")

    def __init__(self, prefix):
        self.classes = {}  # name -> [(header, exported)]
        self.names = {}  # header -> set of identifiers
        self.text = {}
        for header in installed_headers(prefix):
            with open(os.path.join(prefix, "include", header), encoding="utf-8") as f:
                text = without_comments(f.read())
            self.text[header] = text
            self.names[header] = set(re.findall(r"[A-Za-z_]\w*", text))
            for macros, name in self.CLASS.findall(text):
                self.classes.setdefault(name, []).append((header, bool(self.EXPORT.search(macros))))

    def declares_free(self, name):
        """A function or variable outside classes: declared in some header. (Windows holds functions
        to their export macro: a DLL build that lacks one does not link.)"""
        pattern = re.compile(r"\b" + re.escape(name) + r"\s*[(;\[=]")
        return any(pattern.search(text) for text in self.text.values())

    def declares_member(self, cls, name):
        for header, _ in self.classes[cls]:
            text = self.text[header]
            if name.startswith("operator"):
                op = re.escape(name[len("operator"):].strip())
                if re.search(r"\boperator\s*" + op, text):
                    return True
            elif name in self.names[header]:
                return True
        return False

    def is_qobject(self, cls):
        return any(re.search(r"\bQ_(OBJECT|GADGET)\b", self.text[h]) for h, _ in self.classes[cls])


# --- Exported symbols -------------------------------------------------------------------------------

def top_level_split(text, separator):
    """Splits at `separator` outside <>, () and []."""
    parts, depth, start, i = [], 0, 0, 0
    while i < len(text):
        c = text[i]
        if depth == 0 and text.startswith("operator", i):
            # operator<, operator<<, operator() and the like: their brackets do not nest.
            i += len("operator")
            while i < len(text) and text[i] == " ":
                i += 1
            if text.startswith(("()", "[]"), i):
                i += 2
            while i < len(text) and text[i] in "<>=!+-*/%&|^~,":
                i += 1
            continue
        if c in "<([{":
            depth += 1
        elif c in ">)]}":
            depth -= 1
        elif depth == 0 and text.startswith(separator, i):
            parts.append(text[start:i])
            i += len(separator)
            start = i
            continue
        i += 1
    parts.append(text[start:])
    return parts


def strip_parameters(name):
    """'a::b<c>::f(int) const' -> 'a::b<c>::f'; a return type in front of a template function goes."""
    name = re.sub(r"\s*(const|volatile|&&|&)\s*$", "", name)
    name = re.sub(r"\s*\[abi:[^\]]*\]", "", name)
    if name.endswith(")"):
        depth = 0
        for i in range(len(name) - 1, -1, -1):
            if name[i] == ")":
                depth += 1
            elif name[i] == "(":
                depth -= 1
                if depth == 0:
                    if not name[:i].endswith("operator"):
                        name = name[:i]
                    break
    words = top_level_split(name, " ")
    # 'void std::f<int>' -> 'std::f<int>', but keep 'operator new' and conversion operators whole.
    for index, word in enumerate(words):
        if "operator" in word:
            return " ".join(words[index:])
    return words[-1]


def components(qualified):
    return [re.sub(r"<.*>$", "", part) if not part.startswith("operator") else part
            for part in top_level_split(qualified, "::")]


COMPILER_MADE = re.compile(
    r"^(typeinfo name for|typeinfo for|vtable for|VTT for|construction vtable for|guard variable for|"
    r"non-virtual thunk to|virtual thunk to|covariant return thunk to) (.*)$")
MOC_MEMBERS = {"staticMetaObject", "metaObject", "qt_metacast", "qt_metacall", "qt_static_metacall"}
WEAK = set("WwVvu")


def exported_symbols(library):
    out = subprocess.run([NM, "-DC", "--defined-only", library], check=True, capture_output=True,
                         text=True).stdout
    for line in out.splitlines():
        fields = line.split(" ", 2)
        if len(fields) == 3:
            yield fields[1], fields[2]


def judge(symbol_type, symbol, declarations):
    """None when the symbol may be exported, else why not."""
    if symbol.startswith(("__asan", "__odr_asan", "__sancov", "__ubsan", "__tsan", "__start_", "__stop_")) or \
            symbol in ("_init", "_fini", "__bss_start", "_edata", "_end"):
        return None  # the sanitizers' and the linker's own
    made = COMPILER_MADE.match(symbol)
    entity = made.group(2) if made else symbol
    if made and made.group(1).startswith("construction vtable"):
        entity = entity.split("-in-")[-1]
    is_class_entity = made is not None and "thunk" not in made.group(1) and "guard" not in made.group(1)
    if is_class_entity and made.group(1).startswith("typeinfo") and entity.rstrip().endswith((")", "*", "&")):
        # The type information of a function or pointer type built of others (what std::function
        # asks for in some builds, the sanitized ones among them): not a class, and made wherever
        # the same type is used.
        return None
    qualified = entity if is_class_entity else strip_parameters(entity)
    parts = components(qualified)
    # The innermost scope that an installed header declares as a class.
    names = parts if is_class_entity else parts[:-1]
    cls = next((p for p in reversed(names) if p in declarations.classes), None)
    if cls is None:
        if not is_class_entity and declarations.declares_free(parts[-1]):
            return None
        if parts[0] != "vorn" and symbol_type in WEAK:
            # An instantiation of a template of the standard library, Boost or Qt that an exported
            # type of ours made visible: weak, and any other library makes the same one.
            return None
        if is_class_entity:
            return f"class {qualified} is declared in no installed header"
        return f"{qualified} is declared in no installed header"
    if not any(exported for _, exported in declarations.classes[cls]):
        return f"class {cls} exports {qualified} without its export macro"
    if is_class_entity or cls == parts[-1]:
        return None
    member = parts[-1]
    if member in (cls, "~" + cls):
        return None
    if member in MOC_MEMBERS and declarations.is_qobject(cls):
        return None
    if declarations.declares_member(cls, member):
        return None
    return f"{qualified} is not declared in class {cls}'s installed header"


def check_symbols(_build_dir, prefix):
    declarations = Declarations(prefix)
    problems = []
    libraries = []
    for folder in ("lib", "lib64"):
        path = os.path.join(prefix, folder)
        if not os.path.isdir(path):
            continue
        for name in sorted(os.listdir(path)):
            full = os.path.join(path, name)
            # Each library once: the file itself, not the links to it.
            if re.search(r"\.so(\.[\d.]+)?$", name) and not os.path.islink(full):
                libraries.append(full)
    count = 0
    for library in libraries:
        for symbol_type, symbol in exported_symbols(library):
            count += 1
            why = judge(symbol_type, symbol, declarations)
            if why:
                problems.append(f"{os.path.basename(library)}: {symbol}: {why}")
    if not libraries:
        problems.append("no library installed")
    return problems, f"{count} exported symbols of {len(libraries)} libraries, all declared"


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in ("headers", "symbols"):
        print(__doc__, file=sys.stderr)
        return 2
    check = check_headers if sys.argv[1] == "headers" else check_symbols
    with tempfile.TemporaryDirectory(prefix="vorn-install-") as prefix:
        install(sys.argv[2], prefix)
        problems, summary = check(sys.argv[2], prefix)
    for problem in problems:
        print(problem)
    if problems:
        print(f"{len(problems)} problems", file=sys.stderr)
        return 1
    print(summary)
    return 0


if __name__ == "__main__":
    sys.exit(main())

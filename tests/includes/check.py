#!/usr/bin/python3
"""Holds the tree to its levels: every #include of ours follows the links that the folder declares, nothing but the
backends knows a window system, and src/README.md shows the levels as they are.

    check.py SOURCE_FOLDER MODULES_TXT     (modules.txt is written into the build folder by CMake)"""

import os
import re
import sys

OWN_INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')
# The folders that may know one, by their first words under src/.
BACKENDS = ("platform/x11", "platform/wayland", "session")
WINDOW_SYSTEM = [
    (re.compile(r"^\s*#\s*(if|ifdef|ifndef|elif)\b.*\b(Q_OS_|Q_WS_|_WIN32|__APPLE__|__linux__|\w*XCB|\w*X11|\w*WAYLAND)"),
     "asks at compile time for a system"),
    (re.compile(r"^\s*#\s*include\s+<(xcb/|X11/|wayland)"), "includes a window system's header"),
    (re.compile(r"\bQNativeInterface\b|\bqpa/|\bQX11Info\b"), "reaches for the window system through the toolkit"),
    (re.compile(r"\bplatformName\s*\(\)"), "asks which window system runs"),
]


class Module:
    def __init__(self, line):
        self.name, level, self.folder, links = line.split(";")
        self.level = int(level)
        self.links = [link for link in links.split(",") if link]


def read_modules(path):
    with open(path) as file:
        modules = [Module(line.strip()) for line in file if line.strip()]
    return {module.name: module for module in modules}


def reachable(module, modules):
    seen = set()
    waiting = [module.name]
    while waiting:
        name = waiting.pop()
        if name not in seen:
            seen.add(name)
            waiting += modules[name].links
    return seen


def module_of(path, modules):
    """The module whose folder holds this path under src/: the deepest one. None for files beside the folders."""
    holders = [module for module in modules.values() if path.startswith(module.folder + "/")]
    return max(holders, key=lambda module: len(module.folder), default=None)


def sources(root):
    for folder, _, names in os.walk(root):
        for name in sorted(names):
            if name.endswith((".h", ".cpp")):
                path = os.path.join(folder, name)
                with open(path, encoding="utf-8") as file:
                    yield os.path.relpath(path, root), file.read().splitlines()


def check_includes(path, lines, modules, root):
    module = module_of(path, modules)
    allowed = reachable(module, modules) if module else set(modules)
    for number, line in enumerate(lines, 1):
        match = OWN_INCLUDE.match(line)
        if not match or match[1].endswith(".moc"):
            continue
        included = match[1]
        # A proxy is generated from the description beside it.
        described = os.path.splitext(included)[0] + ".xml"
        if not any(os.path.exists(os.path.join(root, name)) for name in (included, described)):
            yield f"{path}:{number}: \"{included}\" isn't a path from src/"
            continue
        target = module_of(included, modules)
        if target and target.name not in allowed:
            yield (f"{path}:{number}: includes {included}, but {module.name} (level {module.level}) doesn't link "
                   f"{target.name} (level {target.level})")


def check_window_system(path, lines):
    if path.startswith(BACKENDS):
        return
    for number, line in enumerate(lines, 1):
        for pattern, what in WINDOW_SYSTEM:
            if pattern.search(line):
                yield f"{path}:{number}: {what}: {line.strip()}"


def table_rows(readme):
    """The rows | level | folder | links | home of | by folder, as (level, set of links)."""
    rows = {}
    with open(readme, encoding="utf-8") as file:
        for line in file:
            cells = [cell.strip().replace("`", "") for cell in line.strip().strip("|").split("|")]
            if line.startswith("|") and len(cells) >= 4 and cells[0].isdigit():
                links = {link for link in re.split(r"[,\s]+", cells[2]) if link and link not in ("-", "none")}
                for folder in re.split(r",\s*", cells[1]):
                    rows[folder] = (int(cells[0]), links)
    return rows


def check_table(readme, modules):
    rows = table_rows(readme)
    for module in modules.values():
        row = rows.pop(module.folder, None)
        if row is None:
            yield f"README.md: no row for {module.folder} (level {module.level}, links {', '.join(module.links)})"
        elif row != (module.level, set(module.links)):
            yield (f"README.md: {module.folder} stands at level {row[0]} with links {', '.join(sorted(row[1]))}, but "
                   f"is level {module.level} and links {', '.join(sorted(module.links))}")
    for folder in rows:
        yield f"README.md: {folder} has a row, but no such library is built"


def main(root, modules_path):
    modules = read_modules(modules_path)
    complaints = []
    for path, lines in sources(root):
        complaints += check_includes(path, lines, modules, root)
        complaints += check_window_system(path, lines)
    complaints += check_table(os.path.join(root, "README.md"), modules)
    print("\n".join(complaints) or f"{len(modules)} folders, all includes follow the links")
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))

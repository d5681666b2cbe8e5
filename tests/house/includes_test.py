#!/usr/bin/env python3
"""Reads the includes of src/ and tools/ and fails on what would make the rooms one lump: modules or folders that include
each other in a circle, and an include of something that the including library does not link.

includes_test.py SOURCES LINK_LINES: LINK_LINES has a line "directory: target linked ..." for every target.

A module is a header with its source.  A library that is made of several others (an interface library) is looked through.
"""
import collections
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def module_of(path):
    return str(path.with_suffix(""))


def circles(edges):
    """The strongly connected components of more than one node."""
    index, low, stack, found = {}, {}, [], []

    def visit(node):
        index[node] = low[node] = len(index)
        stack.append(node)
        for other in sorted(edges[node]):
            if other not in index:
                visit(other)
            if other in stack:
                low[node] = min(low[node], low[other])
        if low[node] == index[node]:
            part = stack[stack.index(node):]
            del stack[stack.index(node):]
            if len(part) > 1:
                found.append(sorted(part))

    for node in sorted(edges):
        if node not in index:
            visit(node)
    return found


def read_link_lines(root, file):
    """What the targets of each directory link, as directories, directly or through others; and targets that link themselves."""
    directory_of, links = {}, collections.defaultdict(set)
    for line in file.read_text().splitlines():
        directory, _, rest = line.partition(": ")
        target, *linked = rest.split()
        directory_of[target] = pathlib.Path(directory).relative_to(root)
        links[target].update(linked)

    def closure(target, seen):
        for linked in links.get(target, ()):
            if linked not in seen:
                seen.add(linked)
                closure(linked, seen)
        return seen

    reach, circular = collections.defaultdict(set), []
    for target, directory in directory_of.items():
        linked = closure(target, set())
        reach[directory] |= {directory_of[t] for t in linked if t in directory_of}
        if target in linked:
            circular.append(f"{target} links itself, through others")
    return reach, circular


def room_of(path, rooms):
    return next((folder for folder in path.parents if folder in rooms), None)


def resolve(root, source, name):
    for base in (source.parent, pathlib.Path("src"), pathlib.Path("tools")):
        if (root / base / name).is_file():
            return base / name
    return None  # written by the build


def main(root, link_lines):
    sys.setrecursionlimit(10000)
    reach, faults = read_link_lines(root, link_lines)
    sources = sorted(p.relative_to(root) for top in ("src", "tools") for p in (root / top).rglob("*.[ch]*")
                     if p.suffix in (".h", ".cc"))
    modules, folders = collections.defaultdict(set), collections.defaultdict(set)
    for source in sources:
        modules[module_of(source)]
        folders[str(source.parent)]
        room = room_of(source, reach)
        if room is None:
            faults.append(f"{source} belongs to no library")
            continue
        text = (root / source).read_text()
        if not text.startswith("// "):
            faults.append(f"{source} does not open with a line that says what it holds")
        for name in INCLUDE.findall(text):
            included = resolve(root, source, name)
            if included is None:
                continue
            if module_of(included) != module_of(source):
                modules[module_of(source)].add(module_of(included))
            if included.parent != source.parent:
                folders[str(source.parent)].add(str(included.parent))
            there = room_of(included, reach)
            if there != room and there not in reach[room]:
                faults.append(f"{source} includes {included}, which {room} does not link")
    faults += [f"circle of {what}: {', '.join(circle)}" for what, edges in (("modules", modules), ("folders", folders))
               for circle in circles(edges)]
    print("\n".join(map(str, faults)))
    passed = not faults and len(sources) > 100
    print(f"{len(sources)} sources, {len(faults)} faults")
    return 0 if passed else 1


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])))

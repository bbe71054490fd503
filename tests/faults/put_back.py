"""Whether a home is again what it was before a clean that was taken back."""

import disk


def compare(before, between, after, ticked, trashes, own):
    """What is not as it was, a line each, and how many things were away in between. `ticked`: what the clean was to take;
    `trashes`: the tops of the Trash folders, what lay in them was to go for good; `own`: where the program keeps what it
    knows."""
    problems, moved = [], 0
    holders = {path.rpartition(b"/")[0] for path in ticked}
    for path, was in before.nodes.items():
        now = after.nodes.get(path)
        if _is_below(path, own):
            continue
        if _is_below(path, trashes):
            if now is not None and was.kind == "file" and b"/files/" in path and not now.same_content(was):
                problems.append(f"changed in the Trash: {path!r}")
            continue
        if now is None:
            problems.append(f"not put back: {path!r}")
            continue
        moved += path not in between.nodes
        if not now.same_content(was) or now.mode != was.mode:
            problems.append(f"not as it was: {path!r}")
        # A folder's own time changes with what lies directly in it.
        went_whole = path not in holders and _is_below(path, ticked)
        if (was.kind != "folder" or went_whole) and now.modified != was.modified:
            problems.append(f"another time: {path!r}")
    return problems + list(_rests(before, after, trashes, own)), moved


def _is_below(path, tops):
    return any(disk.at_or_below(path, top) for top in tops)


def _rests(before, after, trashes, own):
    """What is there now and was not."""
    for path in after.nodes:
        if path in before.nodes or _is_below(path, own):
            continue
        if not _is_below(path, trashes):
            yield f"made: {path!r}"
        elif any(path.startswith((trash + b"/files/", trash + b"/info/")) for trash in trashes):
            yield f"left in the Trash: {path!r}"

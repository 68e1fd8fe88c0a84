"""Writes sources in which every mutant sleeps until it is called by its number."""


def render(text, mutants, unlocked):
    """The text with each of the mutants (number to point) behind a switch, and with compile-time constants that
    hold one made constants of the run time. Lines stay where they are."""
    expressions = {}
    drops = {}
    for number, point in mutants.items():
        if point.drops:
            drops.setdefault(point.start, []).append(number)
        else:
            expressions.setdefault((point.start, point.end), []).append((number, point))
    edits = sorted([*expressions, *unlocked, *((start, start) for start in drops)], key=lambda e: (e[0], -e[1]))

    def copy(start, end, inner):
        pieces = []
        position = start
        while inner:
            begin, finish = inner[0]
            nested = [edit for edit in inner[1:] if edit[0] < finish and edit[1] <= finish]
            if begin == finish:
                # a statement that starts where one of its expressions does
                nested = []
            pieces.append(text[position:begin])
            pieces.append(switch(begin, finish, nested))
            inner = [edit for edit in inner[1:] if edit not in nested]
            position = finish
        pieces.append(text[position:end])
        return "".join(pieces)

    def switch(start, end, nested):
        if start == end:
            return "".join(f"if (!zolMutant({number})) " for number in drops[start])
        if (start, end) in unlocked:
            return unlocked[(start, end)]
        result = copy(start, end, nested)
        for number, point in expressions[(start, end)]:
            result = f"(zolMutant({number}) ? {point.mutated} : {result})"
            if point.cast:
                result = f"static_cast<{point.cast}>{result}"
        return result

    # the switch of a statement goes in front of what is nested in it
    edits.sort(key=lambda e: (e[0], e[0] != e[1], -e[1]))
    return copy(0, len(text), edits)

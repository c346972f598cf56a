"""The list of the mutants that change nothing.

An entry is a line for the file and the function, one for the line of the
source, one for the change, and the reason, all but the first indented:

    internal/Character.h: isUpper
      constexpr bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
      >= -> >
      why this makes no difference, on one line or more

The same change in the same line has a number: ">= -> > #2".
"""


class Survivors:
    def __init__(self, path):
        self._reasons = {}
        with open(path, encoding="utf-8") as file:
            lines = [line.rstrip("\n") for line in file
                     if line.strip() and not line.startswith("#")]
        entry = []
        for line in lines:
            if not line.startswith("  "):
                self._add(entry)
                entry = []
            entry.append(line.strip())
        self._add(entry)

    def __contains__(self, mutant):
        return mutant.key in self._reasons

    def unknown(self, mutants):
        """The entries that no mutant fits."""
        known = {mutant.key for mutant in mutants}
        return [key for key in self._reasons if key not in known]

    def _add(self, entry):
        if not entry:
            return
        if len(entry) < 4:
            raise SystemExit(f"not an entry with a reason: {entry}")
        file, _, function = entry[0].partition(":")
        what, _, count = entry[2].partition(" #")
        key = (file, function.strip(), entry[1], what, int(count or 1))
        self._reasons[key] = " ".join(entry[3:])

"""Rows of figures, and the table that they make."""

import dataclasses
import statistics
import typing


class Figure(typing.NamedTuple):
    """The median of what was measured, and where the middle half of it lies."""

    median: float
    low: float
    high: float

    @staticmethod
    def of(values):
        values = sorted(values)
        if not values:
            raise ValueError("nothing was measured")
        if len(values) < 4:
            return Figure(statistics.median(values), values[0], values[-1])
        low, median, high = statistics.quantiles(values, n=4, method="inclusive")
        return Figure(median, low, high)

    def text(self, unit):
        middle = f" ({_number(self.low)}–{_number(self.high)})" if _number(self.low) != _number(self.high) else ""
        return f"{_number(self.median)} {unit}{middle}"


class Mark(typing.NamedTuple):
    """At most `limit`: of the ratio to the peer, or of the figure itself."""

    limit: float
    of_ratio: bool = False


@dataclasses.dataclass
class Row:
    """`ours` and `peer` are lists of what was measured, in `unit`; `beside` says what the peer is. Without a peer there
    is no ratio."""

    what: str
    unit: str
    ours: list
    peer: list = dataclasses.field(default_factory=list)
    beside: str = ""
    mark: Mark = None

    def cells(self):
        ours = Figure.of(self.ours)
        peer = Figure.of(self.peer) if self.peer else None
        ratio = ours.median / peer.median if peer and peer.median else None
        beside = ": ".join(filter(None, [self.beside, peer.text(self.unit) if peer else ""]))
        return [self.what, ours.text(self.unit), beside or "–", "–" if ratio is None else f"{ratio:.2f}",
                self._mark_text(), self._verdict(ours.median, ratio)]

    def _mark_text(self):
        if self.mark is None:
            return "–"
        return f"at most {self.mark.limit:g}" + ("×" if self.mark.of_ratio else f" {self.unit}")

    def _verdict(self, value, ratio):
        if self.mark is None:
            return "–"
        reached = ratio if self.mark.of_ratio else value
        if reached is None:
            return "no ratio"
        # As exact as what is shown.
        return "met" if float(_number(reached)) <= self.mark.limit else "missed"


def _number(value):
    if abs(value) >= 100:
        return f"{value:.0f}"
    return f"{value:.1f}" if abs(value) >= 10 else f"{value:.2f}"


def markdown(rows):
    lines = [["what", "ours", "peer", "ratio", "mark", "verdict"], ["---"] * 6, *(row.cells() for row in rows)]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)

#!/usr/bin/env python3
"""Writes eras.json and correlates_era.json: periods, the decades within them, single years within
those. Each begins where the one before it ends.

The id of a year is the year. Two eras are as alike as the middles of their spans are close: 1000 at
the same middle, 0 at ZERO years, -1000 from FAR years on. Years long ago stand closer together: the
AXIS tells where a year lies in years of today.
"""
import musical_data

FIRST, LAST = 1000, 2099
ZERO, FAR = 20, 40
AXIS = [[1000, 0], [1600, 60], [1900, 120], [1950, 145], [2100, 295]]

PERIOD_ID = 5001
DECADE_ID = 5000  # plus a tenth of the decade

# First year and name; a period without a name is named by its span.
PERIODS = [
    (1000, ("Middle Ages", "Mittelalter", "Moyen Âge")),
    (1400, ("Renaissance", "Renaissance", "Renaissance")),
    (1600, ("Baroque", "Barock", "Baroque")),
    (1750, ("Classical Period", "Klassik", "Période classique")),
    (1820, ("Romantic Era", "Romantik", "Époque romantique")),
    (1900, ("Early 20th Century", "Frühes 20. Jahrhundert", "Début du XXe siècle")),
    (1920, ("Interwar", "Zwischenkriegszeit", "Entre-deux-guerres")),
    (1940, None), (1960, None), (1980, None), (2000, None), (2020, None), (2040, None),
    (2060, None), (2080, None),
]

# How people name the decades of the last century: in words, and by two digits ("80s").
WORDS = {
    1920: ("Twenties", "Zwanziger", "Années vingt"),
    1930: ("Thirties", "Dreißiger", "Années trente"),
    1940: ("Forties", "Vierziger", "Années quarante"),
    1950: ("Fifties", "Fünfziger", "Années cinquante"),
    1960: ("Sixties", "Sechziger", "Années soixante"),
    1970: ("Seventies", "Siebziger", "Années soixante-dix"),
    1980: ("Eighties", "Achtziger", "Années quatre-vingt"),
    1990: ("Nineties", "Neunziger", "Années quatre-vingt-dix"),
}


def decade_names(decade):
    names = [f"{decade}-{decade + 9}"]
    if decade in WORDS:
        english, german, french = WORDS[decade]
        short = decade % 100
        names += [f"The {english}", english, f"Die {german}", german, french, f"{short}s",
                  f"'{short}s", f"{short}er", f"Années {short}"]
    if decade == 2000:
        names += ["The Noughties", "Noughties", "Nullerjahre"]
    return names


def decade_element(decade, first, last):
    years = [musical_data.element(year, str(year), range=[year, year])
             for year in range(first, last + 1)]
    return musical_data.element(DECADE_ID + decade // 10,
                                (f"{decade}s", f"{decade}er", f"Années {decade}"),
                                decade_names(decade), range=[first, last], children=years)


def period_element(ident, name, first, last):
    span = f"{first}\u2013{last}"
    texts = [f"{each} ({span})" for each in name] if name else span
    decades = [decade_element(decade, max(first, decade), min(last, decade + 9))
               for decade in range(first - first % 10, last + 1, 10)]
    return musical_data.element(ident, texts, [f"{first}-{last}"] + list(dict.fromkeys(name or [])),
                                range=[first, last], children=decades)


def main():
    ends = [first - 1 for first, _ in PERIODS[1:]] + [LAST]
    elements = [period_element(PERIOD_ID + i, name, first, ends[i])
                for i, (first, name) in enumerate(PERIODS)]
    musical_data.check(elements)
    musical_data.write_list("eras", elements, values="element")
    musical_data.write_correlates("era", "eras", "interval", default=-1000, zero=ZERO, far=FAR,
                                  axis=AXIS)


if __name__ == "__main__":
    main()

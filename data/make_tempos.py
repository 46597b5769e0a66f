#!/usr/bin/env python3
"""Writes tempos.json: speeds, the tempo terms within them, and single beats within those.

Bounds are beats a minute, both ends included. Each group begins where the one before it ends. The
finest bands are one beat wide, so that a number in a statement means that very tempo.
"""
import musical_data

LAST = 999

# Speed in each language, with its terms and the beat at which each begins.
SPEEDS = [
    (("Very slow", "Sehr langsam", "Très lent"), [("Grave", 1), ("Largo", 40)]),
    (("Slow", "Langsam", "Lent"), [("Larghetto", 60), ("Adagio", 70)]),
    (("Medium", "Mittel", "Moyen"), [("Andante", 80), ("Moderato", 100), ("Allegretto", 110)]),
    (("Fast", "Schnell", "Rapide"), [("Allegro", 120), ("Vivace", 155)]),
    (("Very fast", "Sehr schnell", "Très rapide"), [("Presto", 170), ("Prestissimo", 200)]),
]

SPEED_ID = 100001
TERM_ID = 100101
BEAT_ID = 101000  # plus the tempo


def beats(lower, upper):
    for tempo in range(lower, upper + 1):
        yield musical_data.element(BEAT_ID + tempo, f"{tempo} BPM", range=[tempo, tempo])


def main():
    terms = [term for _, group in SPEEDS for term in group]
    ends = [begin - 1 for _, begin in terms[1:]] + [LAST]
    upper = {name: end for (name, _), end in zip(terms, ends)}
    elements = []
    term_id = TERM_ID
    for number, (texts, group) in enumerate(SPEEDS):
        children = []
        for name, begin in group:
            children.append(musical_data.element(term_id, name, range=[begin, upper[name]],
                                                 children=list(beats(begin, upper[name]))))
            term_id += 1
        elements.append(musical_data.element(SPEED_ID + number, texts,
                                             range=[group[0][1], upper[group[-1][0]]],
                                             children=children))
    musical_data.check(elements)
    musical_data.write_list("tempos", elements, values="keep")


if __name__ == "__main__":
    main()

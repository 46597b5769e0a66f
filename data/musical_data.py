"""What the scripts that make the documents of this folder share.

Ids are kept once they are published, because collections store them. Each list has a block of ids
of its own, so that an id of one list is never taken for one of another, and the blocks are compact,
so that they can be looked up in an array.
"""
import json
import os

LANGUAGES = ("eng", "ger", "fre")
FOLDER = os.path.dirname(os.path.abspath(__file__))


def element(ident, texts, also=(), **members):
    """An element; `texts` is one text for all languages or one for each.

    The English text finds the element in the other languages too, since tags are mostly English.
    """
    made = {"id": ident}
    further = [each for each in dict.fromkeys(also) if each]
    if isinstance(texts, str) or len(set(texts)) == 1:
        made["text"] = texts if isinstance(texts, str) else texts[0]
        further = [each for each in further if each != made["text"]]
    else:
        made["text"] = dict(zip(LANGUAGES, texts))
        further += [texts[0]] if texts[0] not in further else []
    if further:
        made["also"] = further
    for key, value in members.items():
        if value not in (None, []):
            made[key] = value
    return made


def walk(elements):
    for each in elements:
        yield each
        yield from walk(each.get("children", ()))


def text_of(each, language=LANGUAGES[0]):
    return each["text"] if isinstance(each["text"], str) else each["text"][language]


def check(elements):
    """Ids differ, and in each language every text finds its own element and no other."""
    everything = list(walk(elements))
    ids = [each["id"] for each in everything]
    assert len(ids) == len(set(ids)), "an id is given twice"
    for language in LANGUAGES:
        owners = {}
        texts = [(text_of(each, language), each["id"]) for each in everything]
        texts += [(text, each["id"]) for each in everything for text in each.get("also", ())]
        for text, ident in texts:
            owner = owners.setdefault(text.casefold(), ident)
            assert owner == ident, f"{language}: {text} is {owner} and {ident}"


def entry(ident, line):
    """The element of a line of a tree."""
    texts, _, also = line.partition(" = ")
    return element(ident, texts.strip().split("|"), [each.strip() for each in also.split(", ")])


def append(parent, line, base, width, room):
    """Adds the element of a line below a parent; the ids of a group stand `width` apart."""
    group = parent.setdefault("children", [])
    assert len(group) < room, f"{line}: no ids are left in its group"
    group.append(entry(base + width * (len(group) + 1), line))
    return group[-1]


def read_tree(tree, first_id, top_width, width):
    """Elements of three levels from a text: levels by indentation, the third ones between ";"."""
    root = {}
    for line in tree.strip("\n").splitlines():
        if not line.startswith(" "):
            top = append(root, line, first_id, top_width, 99)
        elif not line.startswith("    "):
            middle = append(top, line, top["id"], width, top_width // width - 1)
        else:
            for each in line.split(";"):
                append(middle, each, middle["id"], 1, width - 1)
    return root["children"]


def write(name, document):
    """Writes a document with a line for each element."""
    text = json.dumps(document, ensure_ascii=False, separators=(",", ":"))
    with open(os.path.join(FOLDER, name + ".json"), "w", encoding="utf-8", newline="\n") as out:
        out.write(text.replace('{"id"', '\n{"id"') + "\n")


def write_list(name, elements, **members):
    write(name, {"list_type": "zvsdk_list_type_" + name, "languages": list(LANGUAGES), **members,
                 "elements": elements})


def write_correlates(name, of_list, rule, **members):
    write("correlates_" + name, {"correlates": "zvsdk_correlates_" + name, "list": of_list,
                                 "rule": rule, **members})


def write_tree(name, correlates, elements, rule, affinities):
    """Writes a list and its correlates, which follow from the tree and from affinities by name."""
    check(elements)
    ids = {text_of(each): each["id"] for each in walk(elements)}
    write_list(name, elements)
    write_correlates(correlates, name, "tree", **rule, affinities=[
        [ids[one], ids[other], score] for one, other, score in affinities])

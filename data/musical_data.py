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
    further = list(dict.fromkeys(also))
    if isinstance(texts, str) or len(set(texts)) == 1:
        made["text"] = texts if isinstance(texts, str) else texts[0]
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


def check(elements, may_repeat=False):
    """Ids differ; so do the texts of each language, unless the list names places."""
    everything = list(walk(elements))
    ids = [each["id"] for each in everything]
    assert len(ids) == len(set(ids)), "an id is given twice"
    for language in () if may_repeat else LANGUAGES:
        seen = {}
        for each in everything:
            text = each["text"] if isinstance(each["text"], str) else each["text"][language]
            other = seen.setdefault(text.casefold(), each["id"])
            assert other == each["id"], f"{language}: {text} is given twice"


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

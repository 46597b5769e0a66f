#!/usr/bin/env python3
"""Writes origins.json and correlates_origin.json: world regions, sub-regions, countries and their
subdivisions.

Countries and subdivisions, their codes and their names come from the package iso-codes, whose
folder may be given as the only argument; the translations of country names come from its message
catalogs. Regions are those of the United Nations' M49 standard, written down below.

The id of a country is COUNTRY_ID plus its numeric code. A subdivision keeps the id that the present
origins.json gives to its code; new ones go behind them all.
"""
import gettext
import json
import os
import re
import sys

import musical_data

REGION_ID = 30001
SUB_REGION_ID = 30021
COUNTRY_ID = 30100
SUBDIVISION_ID = 31101

# World regions, and the sub-regions within with the codes of their countries.
REGIONS = [
    ("Africa|Afrika|Afrique", [
        ("Northern Africa|Nordafrika|Afrique du Nord", "DZ EG LY MA SD TN EH"),
        ("Western Africa|Westafrika|Afrique de l'Ouest",
         "BJ BF CV CI GM GH GN GW LR ML MR NE NG SH SN SL TG"),
        ("Middle Africa|Zentralafrika|Afrique centrale", "AO CM CF TD CG CD GQ GA ST"),
        ("Eastern Africa|Ostafrika|Afrique de l'Est",
         "IO BI KM DJ ER ET TF KE MG MW MU YT MZ RE RW SC SO SS TZ UG ZM ZW"),
        ("Southern Africa|Südliches Afrika|Afrique australe", "BW SZ LS NA ZA"),
    ]),
    ("Americas|Amerika|Amériques", [
        ("Northern America|Nordamerika|Amérique du Nord", "BM CA GL PM US"),
        ("Central America|Mittelamerika|Amérique centrale", "BZ CR SV GT HN MX NI PA"),
        ("Caribbean|Karibik|Caraïbes",
         "AI AG AW BS BB BQ VG KY CU CW DM DO GD GP HT JM MQ MS PR BL KN LC MF VC SX TT TC VI"),
        ("South America|Südamerika|Amérique du Sud",
         "AR BO BV BR CL CO EC FK GF GY PY PE GS SR UY VE"),
    ]),
    ("Asia|Asien|Asie", [
        ("Central Asia|Zentralasien|Asie centrale", "KZ KG TJ TM UZ"),
        ("Eastern Asia|Ostasien|Asie de l'Est", "CN HK JP KP KR MO MN TW"),
        ("South-eastern Asia|Südostasien|Asie du Sud-Est", "BN KH ID LA MY MM PH SG TH TL VN"),
        ("Southern Asia|Südasien|Asie du Sud", "AF BD BT IN IR MV NP PK LK"),
        ("Western Asia|Westasien|Asie de l'Ouest",
         "AM AZ BH CY GE IQ IL JO KW LB OM QA SA PS SY TR AE YE"),
    ]),
    ("Europe|Europa|Europe", [
        ("Northern Europe|Nordeuropa|Europe du Nord",
         "AX DK EE FO FI GG IS IE IM JE LV LT NO SJ SE GB"),
        ("Western Europe|Westeuropa|Europe de l'Ouest", "AT BE FR DE LI LU MC NL CH"),
        ("Eastern Europe|Osteuropa|Europe de l'Est", "BY BG CZ HU MD PL RO RU SK UA"),
        ("Southern Europe|Südeuropa|Europe du Sud",
         "AL AD BA HR GI GR VA IT MT ME MK PT SM RS SI ES"),
    ]),
    ("Oceania|Ozeanien|Océanie", [
        ("Australia and New Zealand|Australien und Neuseeland|Australie et Nouvelle-Zélande",
         "AU CX CC HM NZ NF"),
        ("Melanesia|Melanesien|Mélanésie", "FJ NC PG SB VU"),
        ("Micronesia|Mikronesien|Micronésie", "GU KI MH FM NR MP PW UM"),
        ("Polynesia|Polynesien|Polynésie", "AS CK PF NU PN WS TK TO TV WF"),
    ]),
    ("Antarctica|Antarktis|Antarctique", [
        ("Antarctic Region|Antarktische Region|Région antarctique", "AQ"),
    ]),
]

REGION_ALSO = {"Europe": ["XE"], "Americas": ["America"], "Northern America": ["North America"],
               "Middle Africa": ["Central Africa"], "Southern Asia": ["South Asia"],
               "Eastern Asia": ["East Asia"], "South-eastern Asia": ["Southeast Asia"],
               "Western Asia": ["Middle East"], "Northern Africa": ["North Africa"],
               "Western Africa": ["West Africa"], "Eastern Africa": ["East Africa"],
               "Eastern Europe": ["East Europe"], "Western Europe": ["West Europe"],
               "Caribbean": ["West Indies"], "Central America": ["Mesoamerica"]}

# Short names in place of the standard's formal ones.
SHORT_NAMES = {
    "CD": "DR Congo|Demokratische Republik Kongo|République démocratique du Congo",
    "CG": "Republic of the Congo|Republik Kongo|République du Congo",
    "FK": "Falkland Islands|Falklandinseln|Îles Malouines",
    "FM": "Federated States of Micronesia|Föderierte Staaten von Mikronesien|"
          "États fédérés de Micronésie",
    "KP": "North Korea|Nordkorea|Corée du Nord", "KR": "South Korea|Südkorea|Corée du Sud",
    "LA": "Laos", "MF": "Saint Martin|Saint-Martin|Saint-Martin",
    "PS": "Palestine|Palästina|Palestine", "RU": "Russia|Russland|Russie",
    "SX": "Sint Maarten", "SY": "Syria|Syrien|Syrie", "TR": "Turkey|Türkei|Turquie",
    "VA": "Vatican City|Vatikanstadt|Cité du Vatican",
    "VG": "British Virgin Islands|Britische Jungferninseln|Îles Vierges britanniques",
    "VI": "US Virgin Islands|Amerikanische Jungferninseln|Îles Vierges américaines",
    "BN": "Brunei", "VN": "Vietnam|Vietnam|Viêt Nam",
    "CI": "Ivory Coast|Elfenbeinküste|Côte d'Ivoire",
    "CV": "Cape Verde|Kap Verde|Cap-Vert", "SZ": "Eswatini", "MO": "Macau|Macau|Macao",
}

COUNTRY_ALSO = {
    "GB": ["UK", "U.K.", "Great Britain", "Britain"], "US": ["U.S.", "U.S.A.", "America (US)"],
    "NL": ["Holland", "The Netherlands"], "CZ": ["Czech Republic"], "KR": ["Korea"],
    "MM": ["Burma"], "SZ": ["Swaziland"], "MK": ["Macedonia"], "DE": ["DD", "XG", "West Germany"],
    "RU": ["SU", "USSR", "Soviet Union"], "CD": ["Zaire"], "AE": ["UAE"], "VA": ["Holy See"],
    "CN": ["PRC"], "TL": ["East Timor"], "BA": ["Bosnia"], "TT": ["Trinidad"], "RS": ["YU"],
}

# What subdivisions are called in English and the standard does not say.
SUBDIVISION_ALSO = {
    "AT-9": ["Vienna"], "AT-6": ["Styria"], "AT-7": ["Tyrol"], "BE-BRU": ["Brussels"],
    "BE-VLG": ["Flanders"], "BE-WAL": ["Wallonia"], "CH-GE": ["Geneva"], "CH-ZH": ["Zurich"],
    "CZ-10": ["Prague"], "DE-BY": ["Bavaria"], "DE-HE": ["Hesse"], "DE-NI": ["Lower Saxony"],
    "DE-NW": ["North Rhine-Westphalia"], "DE-RP": ["Rhineland-Palatinate"], "DE-SN": ["Saxony"],
    "DE-ST": ["Saxony-Anhalt"], "DE-TH": ["Thuringia"], "ES-AN": ["Andalusia"],
    "ES-AR": ["Aragon"], "ES-CT": ["Catalonia"], "ES-IB": ["Balearic Islands"],
    "ES-PV": ["Basque Country"], "FR-20R": ["Corsica"], "FR-BRE": ["Brittany"],
    "FR-NOR": ["Normandy"], "IT-25": ["Lombardy"], "IT-52": ["Tuscany"], "IT-62": ["Lazio"],
    "IT-72": ["Campania"], "IT-82": ["Sicily"], "IT-88": ["Sardinia"], "IT-21": ["Piedmont"],
    "PT-11": ["Lisbon"], "RU-MOW": ["Moscow"], "RU-SPE": ["Saint Petersburg"],
    "SE-AB": ["Stockholm"],
    "SE-M": ["Scania"], "US-DC": ["Washington, D.C.", "Washington DC"], "US-NY": ["New York State"],
}

# Parts of names that the standard sets behind a comma, for sorting.
INVERTED = ("Région", "Hlavní", "Principado", "Región", "Comunidad", "Respublika", "U.S.")

# How alike origins are beyond the tree.
AFFINITIES = [
    ("Europe", "Americas", -200), ("Europe", "Oceania", -300), ("Americas", "Oceania", -300),
    ("Asia", "Oceania", -500), ("Europe", "Asia", -600), ("Africa", "Americas", -600),
    ("Africa", "Europe", -600), ("Africa", "Asia", -700),
    ("Northern America", "Northern Europe", 100),
    ("Northern America", "Australia and New Zealand", 100),
    ("Northern Europe", "Australia and New Zealand", 100),
    ("Western Europe", "Northern Europe", 300),
    ("Western Europe", "Southern Europe", 250), ("Northern Europe", "Eastern Europe", 150),
    ("Southern Europe", "Eastern Europe", 150), ("South America", "Central America", 450),
    ("South America", "Caribbean", 350), ("Central America", "Caribbean", 400),
    ("Northern Africa", "Western Asia", 400), ("Western Africa", "Middle Africa", 400),
    ("Eastern Africa", "Southern Africa", 350), ("Eastern Asia", "South-eastern Asia", 300),
    ("GB", "US", 600), ("GB", "IE", 650), ("GB", "AU", 550), ("GB", "CA", 500), ("GB", "NZ", 500),
    ("US", "CA", 650), ("US", "AU", 450), ("US", "PR", 400), ("AU", "NZ", 680),
    ("DE", "AT", 680), ("DE", "CH", 620), ("AT", "CH", 600), ("FR", "BE", 620), ("FR", "CH", 550),
    ("NL", "BE", 650), ("SE", "NO", 680), ("SE", "DK", 650), ("NO", "DK", 650), ("SE", "FI", 600),
    ("ES", "South America", 300), ("ES", "MX", 350), ("PT", "BR", 450), ("ES", "PT", 600),
    ("JP", "KR", 600), ("RU", "UA", 600), ("RU", "BY", 650), ("CZ", "SK", 680), ("TR", "AZ", 600),
    ("CN", "TW", 650), ("CN", "HK", 650), ("TW", "HK", 650), ("RS", "HR", 600), ("RS", "BA", 620),
    ("IN", "PK", 600), ("FR", "SN", 0), ("JM", "GB", 100), ("FR", "DZ", 0), ("FR", "CA-QC", 350),
]

RULE = {"default": -1000, "inside": [900, 800, 720], "around": [850, 600, 400],
        "siblings": [100, 500, 800], "step": 50, "apart": -1000, "affinity_step": 50}


def iso_data(folder):
    def read(standard):
        with open(os.path.join(folder, "json", f"iso_{standard}.json"), encoding="utf-8") as file:
            return json.load(file)[standard]
    first_level = [each for each in read("3166-2") if "parent" not in each]
    return {each["alpha_2"]: each for each in read("3166-1")}, first_level


def catalogs(folder):
    locales = os.path.join(os.path.dirname(os.path.normpath(folder)), "locale")
    return [gettext.translation("iso_3166-1", locales, [code]).gettext for code in ("de", "fr")]


def country_texts(country, translate):
    short = SHORT_NAMES.get(country["alpha_2"])
    if short:
        return short.split("|")
    name = country.get("common_name", country["name"])
    return [name] + [each(name) for each in translate]


def country_element(country, translate, children):
    code = country["alpha_2"]
    texts = country_texts(country, translate)
    formal = [country[key] for key in ("name", "common_name", "official_name") if key in country]
    also = [code, country["alpha_3"], *COUNTRY_ALSO.get(code, ()), *formal, *texts]
    return musical_data.element(COUNTRY_ID + int(country["numeric"]), texts, also,
                                children=children)


def region_element(ident, texts, children):
    texts = texts.split("|")
    return musical_data.element(ident, texts, REGION_ALSO.get(texts[0], ()), children=children)


def subdivision_names(name):
    """The usual name of a subdivision and what else the standard calls it."""
    inner = re.findall(r"[\[(]([^\])]*)[\])]", name)
    plain = re.sub(r"\s*[\[(*].*", "", name)
    others = [each for each in inner if not re.search(r"[A-Z]{2}-|Region|partial|\bcity\b", each)]
    before, comma, behind = plain.partition(", ")
    if behind in ("Région", "Comunidad"):
        return f"{behind} {before}", others
    if comma and behind.startswith(INVERTED):
        return before, [f"{behind} {before}", *others]
    return plain, others


def published_ids(path):
    """Ids of subdivisions by their codes, as they stand in the document so far."""
    if not os.path.exists(path):
        return {}
    with open(path, encoding="utf-8") as file:
        elements = json.load(file)["elements"]
    return {each["also"][0]: each["id"] for each in musical_data.walk(elements)
            if each["id"] >= SUBDIVISION_ID}


def subdivisions(entries, countries, texts_taken):
    ids = published_ids(os.path.join(musical_data.FOLDER, "origins.json"))
    following = max(ids.values(), default=SUBDIVISION_ID - 1) + 1
    found = {code: [] for code in countries}
    for each in sorted(entries, key=lambda each: each["code"]):
        code = each["code"]
        if code not in ids:
            ids[code], following = following, following + 1
        name, others = subdivision_names(each["name"])
        also = [code, *SUBDIVISION_ALSO.get(code, ()), *others]
        if name.casefold() in texts_taken:  # a way to say which of them is meant
            also.append(f"{name} ({code[:2]})")
        texts_taken.add(name.casefold())
        found[code[:2]].append(musical_data.element(ids[code], name, also))
    return found


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else "/usr/share/iso-codes"
    countries, entries = iso_data(folder)
    translate = catalogs(folder)
    taken = {country_texts(each, translate)[0].casefold() for each in countries.values()}
    below = subdivisions(entries, countries, taken)
    elements, sub_region_id = [], SUB_REGION_ID
    for i, (region, sub_regions) in enumerate(REGIONS):
        children = []
        for texts, codes in sub_regions:
            members = [country_element(countries.pop(code), translate, below[code])
                       for code in codes.split()]
            children.append(region_element(sub_region_id, texts, members))
            sub_region_id += 1
        elements.append(region_element(REGION_ID + i, region, children))
    assert not countries, f"in no region: {sorted(countries)}"
    musical_data.write_list("origins", elements)
    ids = {}
    for each in musical_data.walk(elements):
        ids.setdefault(musical_data.text_of(each), each["id"])
        ids.setdefault(each.get("also", [""])[0], each["id"])
    affinities = [[ids[one], ids[other], score] for one, other, score in AFFINITIES]
    musical_data.write_correlates("origin", "origins", "tree", **RULE, affinities=affinities)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes moods.json and correlates_mood.json: named moods on the plane of valence and energy.

Valence runs from 0 (negative) to 1 (positive), energy from 0 (calm) to 1 (intense). The plane is
divided into 5 by 5 coarse moods, each of which stands in the middle of its square. Its four fine
moods stand in the middles of the square's quarters, so they lie on a grid of 0.1 that leaves no
bare region. Which word stands where is this project's own reading of the words.

Two moods are as alike as their points are close: 1000 at one point, 0 at ZERO, -1000 from FAR on.
"""
import musical_data

ZERO, FAR = 0.35, 1.0

COARSE_ID = 40001
FINE_ID = 40101

# A row of squares for each energy from the highest to the lowest, valence rising within. A square
# has the coarse mood and its quarters: less energy first, within that the lower valence first.
SQUARES = [
    # energy 0.8 to 1
    [
        ("Furious|Wütend|Furieux",
         ["Hostile|Feindselig|Hostile", "Angry|Zornig|En colère",
          "Violent|Gewaltsam|Violent", "Raging|Rasend|Enragé"]),
        ("Aggressive|Aggressiv|Agressif",
         ["Confrontational|Angriffslustig|Provocateur", "Rebellious|Rebellisch|Rebelle",
          "Brutal|Brutal|Brutal", "Fierce|Ungestüm|Féroce"]),
        ("Intense|Intensiv|Intense",
         ["Urgent|Dringlich|Pressant", "Powerful|Kraftvoll|Puissant",
          "Frantic|Hektisch|Frénétique", "Explosive|Explosiv|Explosif"]),
        ("Exciting|Aufregend|Excitant",
         ["Bold|Kühn|Audacieux", "Heroic|Heldenhaft|Héroïque",
          "Wild|Wild|Sauvage", "Electrifying|Elektrisierend|Électrisant"]),
        ("Euphoric|Euphorisch|Euphorique",
         ["Triumphant|Triumphal|Triomphant", "Jubilant|Jubelnd|Jubilant",
          "Ecstatic|Ekstatisch|Extatique", "Exhilarated|Berauscht|Grisant"]),
    ],
    # 0.6 to 0.8
    [
        ("Menacing|Bedrohlich|Menaçant",
         ["Sinister|Finster|Sinistre", "Ominous|Unheilvoll|Inquiétant",
          "Vengeful|Rachsüchtig|Vengeur", "Scornful|Verächtlich|Méprisant"]),
        ("Restless|Rastlos|Agité",
         ["Nervous|Nervös|Nerveux", "Impatient|Ungeduldig|Impatient",
          "Agitated|Aufgewühlt|Bouleversé", "Defiant|Trotzig|Défiant"]),
        ("Driving|Treibend|Entraînant",
         ["Determined|Entschlossen|Déterminé", "Hypnotic|Hypnotisch|Hypnotique",
          "Relentless|Unerbittlich|Implacable", "Pulsating|Pulsierend|Palpitant"]),
        ("Energetic|Energiegeladen|Énergique",
         ["Groovy|Groovig|Groovy", "Lively|Lebhaft|Vif",
          "Confident|Selbstbewusst|Sûr de soi", "Rousing|Mitreißend|Galvanisant"]),
        ("Joyful|Fröhlich|Joyeux",
         ["Playful|Verspielt|Espiègle", "Happy|Glücklich|Heureux",
          "Festive|Festlich|Festif", "Exuberant|Überschwänglich|Exubérant"]),
    ],
    # 0.4 to 0.6
    [
        ("Dark|Düster|Sombre",
         ["Bitter|Bitter|Amer", "Brooding|Grüblerisch|Ténébreux",
          "Anguished|Gequält|Tourmenté", "Eerie|Unheimlich|Lugubre"]),
        ("Tense|Angespannt|Tendu",
         ["Uneasy|Beklommen|Mal à l'aise", "Mysterious|Geheimnisvoll|Mystérieux",
          "Anxious|Ängstlich|Anxieux", "Suspenseful|Spannungsvoll|Haletant"]),
        ("Cool|Cool|Cool",
         ["Detached|Distanziert|Détaché", "Smooth|Geschmeidig|Suave",
          "Edgy|Kantig|Mordant", "Stylish|Stilvoll|Élégant"]),
        ("Upbeat|Beschwingt|Enlevé",
         ["Flirtatious|Kokett|Charmeur", "Sunny|Sonnig|Ensoleillé",
          "Swinging|Swingend|Swinguant", "Bouncy|Hüpfend|Bondissant"]),
        ("Cheerful|Heiter|Gai",
         ["Carefree|Sorglos|Insouciant", "Merry|Vergnügt|Jovial",
          "Whimsical|Schrullig|Fantasque", "Bubbly|Spritzig|Pétillant"]),
    ],
    # 0.2 to 0.4
    [
        ("Gloomy|Trüb|Morose",
         ["Hopeless|Hoffnungslos|Sans espoir", "Somber|Ernst|Grave",
          "Bleak|Freudlos|Glacial", "Regretful|Reumütig|Plein de regrets"]),
        ("Melancholic|Melancholisch|Mélancolique",
         ["Wistful|Wehmütig|Songeur", "Bittersweet|Bittersüß|Doux-amer",
          "Yearning|Sehnsüchtig|Languissant", "Vulnerable|Verletzlich|Vulnérable"]),
        ("Reflective|Nachdenklich|Réfléchi",
         ["Introspective|In sich gekehrt|Introspectif", "Dreamy|Verträumt|Rêveur",
          "Nostalgic|Nostalgisch|Nostalgique", "Ethereal|Ätherisch|Éthéré"]),
        ("Warm|Warm|Chaleureux",
         ["Intimate|Innig|Intime", "Tender|Zärtlich|Tendre",
          "Sensual|Sinnlich|Sensuel", "Romantic|Romantisch|Romantique"]),
        ("Easygoing|Unbeschwert|Décontracté",
         ["Laid-back|Lässig|Relax", "Content|Zufrieden|Satisfait",
          "Breezy|Luftig|Frais", "Charming|Charmant|Charmant"]),
    ],
    # 0 to 0.2
    [
        ("Desolate|Trostlos|Désolé",
         ["Grieving|Trauernd|Endeuillé", "Empty|Leer|Vide",
          "Despairing|Verzweifelt|Désespéré", "Lonely|Einsam|Solitaire"]),
        ("Sad|Traurig|Triste",
         ["Mournful|Klagend|Plaintif", "Fragile|Zerbrechlich|Fragile",
          "Heartbroken|Untröstlich|Le cœur brisé", "Resigned|Resigniert|Résigné"]),
        ("Calm|Ruhig|Calme",
         ["Still|Still|Immobile", "Meditative|Meditativ|Méditatif",
          "Quiet|Leise|Discret", "Floating|Schwebend|Flottant"]),
        ("Peaceful|Friedlich|Paisible",
         ["Soothing|Beruhigend|Apaisant", "Gentle|Sanft|Doux",
          "Hopeful|Hoffnungsvoll|Plein d'espoir", "Pastoral|Ländlich|Pastoral"]),
        ("Serene|Selig|Serein",
         ["Tranquil|Gelassen|Tranquille", "Blissful|Glückselig|Béat",
          "Relaxed|Entspannt|Détendu", "Graceful|Anmutig|Gracieux"]),
    ],
]

# What tags write for one of these moods.
ALSO = {
    "Happy": ["Happiness", "Feel Good", "Feelgood"], "Joyful": ["Joyous", "Joy"],
    "Playful": ["Fun"], "Festive": ["Party", "Celebratory"], "Groovy": ["Funky"],
    "Rousing": ["Uplifting", "Motivational"], "Energetic": ["Energizing", "High Energy"],
    "Heroic": ["Epic"], "Exciting": ["Excited", "Thrilling"], "Euphoric": ["Euphoria"],
    "Angry": ["Anger"], "Aggressive": ["Aggression"], "Eerie": ["Spooky", "Scary", "Creepy"],
    "Suspenseful": ["Dramatic"], "Laid-back": ["Laid Back", "Mellow"],
    "Relaxed": ["Relaxing", "Chill", "Chilled"], "Sensual": ["Sexy"],
    "Romantic": ["Love", "Loving"], "Bittersweet": ["Sentimental"],
    "Melancholic": ["Melancholy"], "Reflective": ["Thoughtful", "Pensive"],
    "Ethereal": ["Atmospheric"], "Hopeful": ["Inspiring", "Optimistic"],
    "Meditative": ["Spiritual", "Contemplative"], "Hopeless": ["Depressing", "Depressive"],
    "Somber": ["Serious"], "Sad": ["Sadness"], "Calm": ["Calming"],
    "Easygoing": ["Easy-going", "Easy Going"], "Mysterious": ["Mystical"], "Smooth": ["Slick"],
    "Anxious": ["Anxiety"], "Dreamy": ["Dreamlike"], "Nostalgic": ["Nostalgia"],
}


def mood(ident, texts, valence, energy, children=None):
    texts = texts.split("|")
    return musical_data.element(ident, texts, ALSO.get(texts[0], ()),
                                plane=[round(valence, 2), round(energy, 2)], children=children)


def main():
    elements = []
    for row, squares in enumerate(SQUARES):
        for column, (name, quarters) in enumerate(squares):
            valence, energy = 0.1 + 0.2 * column, 0.9 - 0.2 * row
            first = FINE_ID + 4 * len(elements)
            fine = [mood(first + i, each, valence + (0.05 if i % 2 else -0.05),
                         energy + (0.05 if i >= 2 else -0.05)) for i, each in enumerate(quarters)]
            elements.append(mood(COARSE_ID + len(elements), name, valence, energy, fine))
    musical_data.check(elements)
    musical_data.write_list("moods", elements)
    musical_data.write_correlates("mood", "moods", "plane", default=0, zero=ZERO, far=FAR)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes artist_types.json and correlates_arttype.json: kinds of artists in three levels.

The ids follow from the places in the tree below: new kinds go to the end of their group.
"""
import musical_data

# By indentation: "English|German|French = further texts", ";" between the finest.
TREE = """
Person|Person|Personne = Solo, Solo Artist, Individual
  Vocalist|Gesang|Chant = Singer, Vocals
    Female Vocalist|Sängerin|Chanteuse = Female Singer, Female
    Male Vocalist|Sänger|Chanteur = Male Singer, Male
    Non-Binary Vocalist|Nichtbinärer Gesang|Chant non binaire = Non-Binary
    Opera Singer|Opernstimme|Voix d'opéra
    Child Vocalist|Kinderstimme|Voix d'enfant
  Singer-Songwriter|Liedermacher|Auteur-compositeur-interprète = Singer/Songwriter
    Female Singer-Songwriter|Liedermacherin|Autrice-compositrice-interprète
    Male Singer-Songwriter|Männlicher Liedermacher|Auteur-compositeur masculin
  Rapper|Rap|Rap = MC, Emcee
    Female Rapper|Rapperin|Rappeuse; Male Rapper|Männlicher Rapper|Rappeur
  Instrumentalist|Instrumentalist|Instrumentiste = Musician, Soloist
    Pianist|Pianist|Pianiste = Keyboardist; Guitarist|Gitarrist|Guitariste
    Violinist|Violinist|Violoniste
    Cellist|Cellist|Violoncelliste; Saxophonist|Saxofonist|Saxophoniste
    Trumpeter|Trompeter|Trompettiste
    Drummer|Schlagzeuger|Batteur = Percussionist; Bassist|Bassist|Bassiste
    Organist|Organist|Organiste
    Flautist|Flötist|Flûtiste = Flutist; Harpist|Harfenist|Harpiste
    Accordionist|Akkordeonist|Accordéoniste
  DJ & Producer|DJ und Produzent|DJ et producteur
    DJ = Disc Jockey; Producer|Produzent|Producteur = Beatmaker; Remixer|Remixer|Remixeur
  Composer & Conductor|Komponist und Dirigent|Compositeur et chef
    Composer|Komponist|Compositeur; Conductor|Dirigent|Chef d'orchestre
    Arranger|Arrangeur|Arrangeur
    Lyricist|Textdichter|Parolier = Songwriter
  Speaker|Sprecher|Voix parlée = Spoken
    Comedian|Komiker|Humoriste; Narrator|Erzähler|Narrateur; Actor|Schauspieler|Acteur = Actress
    Poet|Dichter|Poète
Group|Gruppe|Groupe = Ensemble
  Band|Band|Groupe musical = Rock Band
    Mixed Band|Gemischte Band|Groupe mixte; All-Female Band|Frauenband|Groupe féminin
    All-Male Band|Männerband|Groupe masculin
    Jazz Combo|Jazzcombo|Combo de jazz = Jazz Trio, Jazz Quartet; Brass Band|Blaskapelle|Fanfare
    Folk Group|Folkgruppe|Groupe folk; Tribute Band|Coverband|Groupe de reprises = Cover Band
  Duo = Duet
    Female Duo|Frauenduo|Duo féminin; Male Duo|Männerduo|Duo masculin
    Mixed Duo|Gemischtes Duo|Duo mixte
    Electronic Duo|DJ-Duo|Duo électronique = DJ Duo
  Vocal Group|Vokalgruppe|Groupe vocal = Vocal Ensemble
    Girl Group|Girlgroup|Girls band; Boy Band|Boyband|Boys band
    A Cappella Group|A-cappella-Gruppe|Groupe a cappella
    Mixed Vocal Group|Gemischte Vokalgruppe|Groupe vocal mixte; Vocal Trio|Vokaltrio|Trio vocal
  Collective|Kollektiv|Collectif = Project
    Hip-Hop Crew|Hip-Hop-Crew|Crew hip-hop = Rap Group
    Production Team|Produktionsteam|Équipe de production = Producers
    Supergroup|Supergruppe|Supergroupe
Orchestra & Choir|Orchester und Chor|Orchestre et chœur = Large Ensemble
  Orchestra|Orchester|Orchestre
    Symphony Orchestra|Sinfonieorchester|Orchestre symphonique = Philharmonic
    Chamber Orchestra|Kammerorchester|Orchestre de chambre
    Big Band|Bigband|Big band = Jazz Orchestra
    Wind Orchestra|Blasorchester|Orchestre d'harmonie = Concert Band
    Dance Orchestra|Tanzorchester|Orchestre de danse
    Period Orchestra|Originalklang-Orchester|Orchestre baroque
  Choir|Chor|Chœur = Chorus
    Mixed Choir|Gemischter Chor|Chœur mixte; Women's Choir|Frauenchor|Chœur de femmes
    Men's Choir|Männerchor|Chœur d'hommes
    Children's Choir|Kinderchor|Chœur d'enfants; Gospel Choir|Gospelchor|Chorale gospel
    Chamber Choir|Kammerchor|Chœur de chambre
  Chamber Ensemble|Kammerensemble|Ensemble de chambre
    String Quartet|Streichquartett|Quatuor à cordes; Piano Trio|Klaviertrio|Trio avec piano
    Wind Quintet|Bläserquintett|Quintette à vent
    Early Music Ensemble|Ensemble für Alte Musik|Ensemble de musique ancienne
Character|Figur|Personnage = Fictional
  Fictional Artist|Erfundener Künstler|Artiste fictif
    Cartoon Character|Zeichentrickfigur|Personnage de dessin animé; Puppet|Puppe|Marionnette
    Film Character|Filmfigur|Personnage de film
  Virtual Artist|Virtueller Künstler|Artiste virtuel
    Vocaloid = Voice Synthesizer; Virtual Band|Virtuelle Band|Groupe virtuel
Various|Verschiedene|Divers = Various Artists, VA, Other
  Cast|Ensemble einer Aufführung|Distribution = Original Cast
    Stage Cast|Bühnenensemble|Distribution scénique; Film Cast|Filmensemble|Distribution de film
  Compilation|Zusammenstellung|Compilation = Verschiedene Interpreten
    Artists' Benefit Project|Benefizprojekt|Projet caritatif = Charity Ensemble
    Studio Musicians|Studiomusiker|Musiciens de studio
"""

AFFINITIES = [
    ("Person", "Group", -400), ("Group", "Orchestra & Choir", -200), ("Person", "Character", -300),
    ("Group", "Various", -400), ("Orchestra & Choir", "Various", -400),
    ("Person", "Orchestra & Choir", -700), ("Group", "Character", -500),
    ("Vocalist", "Singer-Songwriter", 650), ("Vocalist", "Rapper", 400),
    ("Female Vocalist", "Female Singer-Songwriter", 750), ("Female Vocalist", "Opera Singer", 600),
    ("Male Vocalist", "Male Singer-Songwriter", 750), ("Female Rapper", "Female Vocalist", 500),
    ("Male Rapper", "Male Vocalist", 500), ("Rapper", "DJ & Producer", 350),
    ("Vocalist", "Duo", 200), ("Duo", "Vocal Group", 550), ("Duo", "Band", 450),
    ("Girl Group", "All-Female Band", 650), ("Girl Group", "Female Duo", 600),
    ("Boy Band", "All-Male Band", 600), ("Boy Band", "Male Duo", 550),
    ("DJ & Producer", "Electronic Duo", 500), ("Electronic Duo", "Production Team", 650),
    ("Hip-Hop Crew", "Rapper", 500), ("Big Band", "Jazz Combo", 500), ("Band", "Collective", 550),
    ("Brass Band", "Wind Orchestra", 600), ("Vocal Group", "Choir", 400),
    ("Chamber Ensemble", "Chamber Orchestra", 600), ("Instrumentalist", "Chamber Ensemble", 200),
    ("Virtual Band", "Band", 400), ("Vocaloid", "Vocalist", 400),
]

RULE = {"default": -1000, "inside": [900, 850], "around": [850, 600], "siblings": [300, 600],
        "step": 50, "apart": -1000, "affinity_step": 50}

FIRST_ID = 8000
TOP_WIDTH, KIND_WIDTH = 160, 16


def main():
    tree = musical_data.read_tree(TREE, FIRST_ID, TOP_WIDTH, KIND_WIDTH)
    musical_data.write_tree("artist_types", "arttype", tree, RULE, AFFINITIES)


if __name__ == "__main__":
    main()

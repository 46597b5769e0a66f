#!/usr/bin/env python3
"""Writes genres.json and correlates_genre.json: a tree of genres and how alike they are.

The ids follow from the places in the tree below: new genres go to the end of their group.
"""
import musical_data

# Roots, genres and subgenres by indentation. "English|German|French" where the languages differ,
# "= ..., ..." what tags write instead, ";" between subgenres.
TREE = """
Pop = Pop Music, Popular, Popular Music, Top 40, Charts, Mainstream
  Dance Pop = Dance-Pop, Dancepop, Pop/Dance
    Electropop = Electro Pop, Electro-Pop; Europop = Euro Pop, Euro-Pop; Bubblegum Dance
    Disco Pop = Pop/Funk; Hyperpop; Club Pop|Clubpop|Pop club
  Teen Pop = Teenpop
    Post-Teen Pop = Post Teen Pop; Boy Band Pop|Boyband-Pop|Pop de boys band = Boy Band, Boyband
    Girl Group Pop|Girlgroup-Pop|Pop de girls band = Girl Group; Bubblegum Pop = Bubblegum
    Talent Show Pop|Castingshow-Pop|Pop de télé-crochet = Talent Show
  Indie Pop = Indiepop, Indie-Pop
    Indie Poptimism; Bedroom Pop; Chamber Pop; Twee Pop; Dream Pop = Dream; Jangle Pop
  Synth-Pop = Synthpop, Synth Pop, Technopop
    New Romantic; Electroclash; Synthwave = Retrowave, Outrun; Minimal Wave
  Pop Rock = Pop/Rock, Pop-Rock
    Power Pop; Soft Rock; Piano Pop; Yacht Rock
  Adult Contemporary
    Pop Ballad|Popballade|Ballade pop = Ballad, Ballads; Adult Pop
    Singer-Songwriter Pop|Liedermacher-Pop|Pop à texte; Acoustic Pop|Akustik-Pop|Pop acoustique
  Traditional Pop|Klassischer Pop|Pop traditionnelle = Oldies, Retro
    Brill Building; Sunshine Pop; Baroque Pop; Yé-yé = Ye-Ye, Yeye
  European Pop|Europäischer Pop|Pop européenne
    Schlager = German Pop; French Pop|Französischer Pop|Variété française = Variété, Variete
    Italo Pop = Italo-Pop, Italian Pop; British Pop|Britischer Pop|Pop britannique = UK Pop
    Eurovision; Turbo-Folk = Turbofolk, Pop-Folk
  Asian Pop|Asiatischer Pop|Pop asiatique
    K-Pop = KPop, Korean Pop; J-Pop = JPop, Japanese Pop
    C-Pop = CPop, Mandopop, Cantopop, Chinese Pop; City Pop; Indian Pop|Indischer Pop|Pop indienne
    Thai Pop|Thai-Pop|Pop thaïe = T-Pop; OPM = Pinoy Pop, Original Pilipino Music
  Art Pop = Experimental Pop
    Sophisti-Pop; Progressive Pop; Instrumental Pop
Rock = Rock Music, Rock & Pop, General Rock
  Classic Rock
    Album Rock = AOR, Album-Oriented Rock; Arena Rock = Stadium Rock; Heartland Rock
    Mellow Gold; Glam Rock = Glam; Roots Rock; Slow Rock; Power Ballad|Powerballade|Power ballad
  Hard Rock = Hardrock
    Glam Metal = Hair Metal; Stoner Rock; Southern Metal; Boogie Rock; Acid Rock; Biker Rock
  Alternative Rock = Alternative, AlternRock, Alt-Rock, Alt Rock, Alternative & Punk
    Permanent Wave; Grunge; Britpop = Brit Pop, Brit-Pop; Post-Grunge; Funk Rock
    College Rock; Rap Rock; Industrial Rock; Gothic Rock = Gothic, Goth Rock, Goth
    Modern Rock; Shoegaze = Shoegazing; Noise Rock; Space Rock
  Indie Rock = Indie, Indie-Rock, Independent
    Garage Rock Revival; Math Rock; Slowcore; Lo-Fi = Lo-Fi Indie, Lofi; Post-Rock = Post Rock
    Dance Rock = Indie Dance; Madchester
  Progressive Rock = Prog Rock, Prog, Art Rock
    Symphonic Rock; Krautrock; Canterbury Scene = Canterbury; Neo-Prog; Jazz Rock = Jazz-Rock
    Instrumental Rock
  Psychedelic Rock = Psychedelic, Psychadelic, Psych Rock
    Neo-Psychedelia; Garage Rock = Garage; Raga Rock; Jam Band = Jam Bands
  Rock and Roll = Rock & Roll, Rock 'n' Roll, Rock n Roll, Rock'n'Roll
    Rockabilly; Surf Rock = Surf; Doo-Wop = Doo Wop; Merseybeat = Beat
    Psychobilly; British Invasion
  Folk Rock = Folk-Rock
    Celtic Rock; Medieval Rock|Mittelalter-Rock|Rock médiéval; Pagan Folk
  Blues Rock = Blues-Rock
    Southern Rock; Swamp Rock; Pub Rock
  New Wave = New-Wave
    Post-Punk = Post Punk; Cold Wave = Coldwave; Neue Deutsche Welle = NDW; No Wave
    Post-Punk Revival; Darkwave = Dark Wave
  World Rock|Rock aus aller Welt|Rock du monde
    J-Rock = JRock, Japanese Rock; German Rock|Deutschrock|Rock allemand
    French Rock|Französischer Rock|Rock français; Russian Rock|Russischer Rock|Rock russe
    Anatolian Rock|Anatolischer Rock|Rock anatolien
Metal = Metal Music
  Heavy Metal
    New Wave of British Heavy Metal = NWOBHM; Power Metal; Speed Metal
    Progressive Metal = Prog Metal; Neoclassical Metal
  Thrash Metal = Thrash
    Groove Metal; Crossover Thrash
  Death Metal
    Melodic Death Metal = Melodeath; Technical Death Metal; Grindcore; Brutal Death Metal; Deathcore
  Black Metal
    Symphonic Black Metal; Atmospheric Black Metal; Viking Metal; Pagan Metal
  Doom Metal = Doom
    Stoner Metal; Sludge Metal = Sludge; Drone Metal; Funeral Doom
  Alternative Metal
    Nu Metal = Nu-Metal, Nü-Metal; Rap Metal; Industrial Metal = Neue Deutsche Härte; Djent
  Metalcore
    Melodic Metalcore; Mathcore; Post-Metal
  Symphonic Metal
    Gothic Metal; Folk Metal; Opera Metal
Punk = Punk Music, Punk/New Wave
  Punk Rock = Punk-Rock
    Classic Punk|Klassischer Punk|Punk classique = Punk 77; Street Punk = Streetpunk
    Oi! = Oi; Garage Punk; Cowpunk; Acid Punk; Deutschpunk = German Punk
  Pop Punk = Pop-Punk
    Skate Punk; Easycore; Neon Pop Punk
  Hardcore Punk = Hardcore
    Post-Hardcore = Post Hardcore; Melodic Hardcore; Crust Punk = Crust; Straight Edge
    Powerviolence
  Emo
    Screamo; Midwest Emo; Emo Pop
  Ska Punk = Ska-Punk
    Ska-Core; Folk Punk; Celtic Punk
  Proto-Punk
    Riot Grrrl = Riot Grrl; Art Punk
Electronic|Elektronisch|Électronique = Electronica, Electronic Music, Dance/Electronic
  EDM = Electronic Dance Music, Dance & EDM
    Big Room = Big Room House; Electro House; Pop EDM = Edm Pop; Progressive Electro House
    Future Bass; Tropical House; Brostep; Festival Trap|Festival-Trap|Trap de festival = EDM Trap
    Moombahton; Hands Up = Handsup
  House = House Music, Club-House
    Deep House; Tech House = Tech-House; Progressive House; Acid House = Acid
    Chicago House; French House = Filter House; Garage House = US Garage; Tribal House = Tribal
    Euro House = Euro-House; Future House; Melodic House; Minimal House; Funky House
  Techno
    Detroit Techno; Minimal Techno = Minimal; Acid Techno; Hard Techno; Dub Techno
    Melodic Techno; Industrial Techno = Techno-Industrial; Euro-Techno = Eurotechno
  Trance
    Psytrance = Psy-Trance, Psychedelic Trance; Goa Trance = Goa; Uplifting Trance
    Vocal Trance; Progressive Trance; Tech Trance; Hard Trance
  Drum and Bass = Drum & Bass, Drum'n'Bass, Drum n Bass, DnB, D&B
    Jungle; Liquid Funk = Liquid Drum and Bass; Neurofunk; Jump Up
  Bass Music = Bass
    Dubstep; UK Garage = Two-Step; Grime Instrumental; Breakbeat = Breaks, Nu-Breakz; Big Beat
    Footwork; Miami Bass = Booty Bass
  Hard Dance
    Hardstyle; Gabber; Happy Hardcore; Rave = Old School Rave; Jumpstyle
  Dance = Dance Music, Club, Club/Dance, Dancefloor
    Eurodance = Euro-Dance; Hi-NRG = High Energy Dance; Freestyle; Italo Dance; Vocal House
  Ambient
    Dark Ambient; Drone = Drone Music; Space Ambient = Space, Space Music; Psybient
    Ambient Techno
  Downtempo = Down Tempo, Downbeat
    Trip-Hop = Trip Hop; Chillout = Chill Out, Chill-Out, Lounge Beats; Chillwave
    Lo-Fi Beats = Lofi Hip Hop, Lo-Fi Hip-Hop, Chillhop; Nu Jazz Beats|Nu-Jazz-Beats|Beats nu jazz
  IDM = Intelligent Dance Music, Leftfield
    Glitch; Breakcore; Folktronica; Illbient
  Industrial = Industro-Goth
    EBM = Electronic Body Music; Electro-Industrial; Aggrotech; Power Noise = Rhythmic Noise
    Futurepop
  Electro|Electro|Électro
    Electro-Funk = Electro Funk; Italo Disco = Italo-Disco
    Berlin School|Berliner Schule|École de Berlin
    Chiptune = Chip Music, Bitpop; Vaporwave
Hip-Hop/Rap = Rap, Rap/Hip-Hop, Rap/Hip Hop, Hip Hop/Rap, Rap & Hip-Hop, Hip-Hop & Rap, Rap Music
  Hip Hop = Hip-Hop, HipHop, Hiphop Music
    Southern Hip Hop = Dirty South, Southern Rap; Gangster Rap = Gangsta, Gangsta Rap
    Trap = Trap Music, Trap Rap; East Coast Hip Hop = East Coast Rap
    West Coast Hip Hop = West Coast Rap, G-Funk; Hardcore Hip Hop = Hardcore Rap
    Old School Hip Hop = Old School Rap, Old-School Rap; Boom Bap = Golden Age Hip Hop
    Crunk; Drill = UK Drill; Cloud Rap; Emo Rap; Melodic Rap = Mumble Rap
  Alternative Hip Hop = Alternative Rap
    Conscious Hip Hop = Conscious Rap, Political Rap; Jazz Rap = Jazz-Rap; Abstract Hip Hop
    Underground Hip Hop = Underground Rap; Experimental Hip Hop; Horrorcore
  Pop Rap = Pop-Rap
    Party Rap; Snap Music; Comedy Rap; Hip House = Hip-House
  Instrumental Hip Hop
    Turntablism; Beatboxing = Beatbox
  International Hip Hop|Internationaler Hip-Hop|Hip-hop international
    Grime; UK Hip Hop = British Hip Hop; German Hip Hop|Deutschrap|Rap allemand = German Rap
    French Hip Hop|Französischer Rap|Rap français = French Rap; Christian Hip Hop = Christian Rap
    Italian Hip Hop|Italienischer Rap|Rap italien = Italian Rap; Desi Hip Hop = Desi Rap
    K-Rap = Korean Hip Hop; Turkish Hip Hop|Türkischer Rap|Rap turc = Turkish Rap
R&B = RnB, R & B, R'n'B, Rhythm and Blues, Rhythm & Blues, R&B/Soul, Soul/R&B, Soul and R&B
  Contemporary R&B = Contemporary RnB, Modern R&B
    Urban Contemporary = Urban; New Jack Swing; Hip Pop = Hip-Pop, Hip Hop Soul; Neo Soul = Neo-Soul
    Alternative R&B = PBR&B, Indie R&B; Slow Jam = Slow Jams; Trap Soul; UK R&B = British R&B
  Soul = Soul Music
    Motown; Southern Soul; Northern Soul; Philly Soul = Philadelphia Soul, Rhythmic Soul
    Psychedelic Soul; Blue-Eyed Soul; Quiet Storm; Deep Soul; Retro Soul = Soul Revival
    Chicago Soul
  Classic R&B|Klassischer R&B|R&B classique = Early R&B
    Jump Blues; New Orleans R&B; Vocal Harmony Group|Vokalharmonie|Groupe vocal
Funk & Disco|Funk und Disco|Funk et disco
  Funk = Funk Music
    P-Funk; Funk Soul|Soul-Funk|Funk soul; Go-Go; Boogie; Synth Funk
    Jazz-Funk = Jazz Funk, Jazz+Funk
    Afro-Funk = Afrofunk; Deep Funk; Porn Groove
  Disco
    Euro Disco = Eurodisco; Nu Disco = Nu-Disco; Philly Disco; Post-Disco; Disco House
Jazz = Jazz Music
  Early Jazz|Früher Jazz|Jazz ancien
    Dixieland = New Orleans Jazz; Ragtime; Chicago Jazz; Gypsy Jazz = Jazz Manouche; Stride
  Swing
    Big Band; Dance Band|Tanzorchester|Orchestre de danse; Electro Swing; Swing Revival
  Bebop = Bop, Bebob
    Hard Bop; Post-Bop; Modal Jazz; Cool Jazz; West Coast Jazz
  Vocal Jazz|Vokaljazz|Jazz vocal = Jazz Vocal, Vocal
    Scat; Torch Songs = Torch Song
  Jazz Fusion = Fusion, Fast Fusion
    Latin Jazz = Afro-Cuban Jazz; Ethno Jazz = World Fusion; Jazz Metal; World Jazz
  Smooth Jazz
    Crossover Jazz; Lounge Jazz; Jazz Pop = Jazz-Pop
  Free Jazz = Avant-Garde Jazz
    Spiritual Jazz; Free Improvisation; Loft Jazz
  Contemporary Jazz|Zeitgenössischer Jazz|Jazz contemporain = Modern Jazz
    Acid Jazz; Nu Jazz = Nu-Jazz; Jazz Trio|Jazztrio|Trio de jazz
    European Jazz|Europäischer Jazz|Jazz européen
    Soul Jazz = Soul-Jazz; Jazz Piano|Jazzpiano|Piano jazz; Jazz Guitar|Jazzgitarre|Guitare jazz
Blues = Blues Music
  Delta Blues
    Country Blues; Texas Blues; Piedmont Blues; Acoustic Blues|Akustischer Blues|Blues acoustique
  Electric Blues|Elektrischer Blues|Blues électrique
    Chicago Blues; Memphis Blues; British Blues; Modern Blues; Soul Blues; Harmonica Blues
  Classic Blues|Klassischer Blues|Blues classique
    Piano Blues; Boogie-Woogie = Boogie Woogie; Swamp Blues; Louisiana Blues
Country = Country Music, Country & Western, Country/Western
  Contemporary Country|Moderner Country|Country moderne = Modern Country
    Country Pop = Pop Country; Country Rap; Bro-Country; Country Rock = Country-Rock; Country Soul
  Traditional Country|Traditioneller Country|Country traditionnelle = Classic Country
    Honky Tonk = Honky-Tonk; Nashville Sound; Outlaw Country; Western Swing; Bakersfield Sound
    Cowboy
    Western Music|Western-Musik|Musique western = Western; Countrypolitan
  Alternative Country = Alt-Country, Alt Country
    Americana; Red Dirt; Gothic Country; Texas Country
  Bluegrass
    Progressive Bluegrass = Newgrass; Old-Time = Old Time Music; Traditional Bluegrass
Folk = Folk Music, Folk, World & Country
  Contemporary Folk|Zeitgenössischer Folk|Folk contemporain
    Indie Folk = Indie-Folk; Folk Pop = Folk-Pop; Freak Folk; Psychedelic Folk = Psych Folk
    Neofolk = Neo-Folk; Anti-Folk; Chamber Folk
  Singer-Songwriter|Liedermacher|Chanson à texte = Singer/Songwriter, Singer Songwriter
    Acoustic|Akustisch|Acoustique = Acoustic Music; Protest Song|Protestlied|Chanson engagée
    Folk Revival = American Folk Revival, Revival
  Traditional Folk|Volksmusik|Folk traditionnel = Folklore, National Folk, Traditional
    Celtic|Keltisch|Celtique = Celtic Music, Irish, Irish Folk; British Folk; Nordic Folk
    Sea Shanty|Shanty|Chant de marins = Shanties; American Folk; Klezmer; Cajun = Zydeco
    Polka; Alpine Folk|Alpenländische Volksmusik|Musique alpine
    Balkan Folk|Balkanmusik|Musique des Balkans = Balkan
    Eastern European Folk|Osteuropäischer Folk|Folk d'Europe de l'Est
Latin|Latein|Latino = Latin Music, Latin American, Latina
  Latin Pop|Latin-Pop|Pop latino = Latino Pop, Pop Latino
    Latin Ballad|Latin-Ballade|Ballade latino = Balada, Balada Romantica
    Spanish Pop|Spanischer Pop|Pop espagnole
    Latin Dance Pop|Latin Dance|Dance latino; Brazilian Pop|Brasilianischer Pop|Pop brésilienne
  Latin Urban|Latin Urban|Urbano latino = Urbano, Urbano Latino
    Reggaeton = Reggaetón, Reggaeton Flow; Latin Hip Hop = Latin Rap, Latin Hip-Hop; Latin Trap
    Dembow
    Latin R&B; Funk Carioca = Baile Funk, Brazilian Funk
  Tropical = Tropical Latin, Música Tropical
    Salsa; Merengue; Bachata; Cumbia; Mambo; Son Cubano = Son; Cha-Cha-Chá = Cha Cha Cha, Cha-Cha
    Bolero; Rumba; Vallenato; Latin Big Band|Latin-Bigband|Big band latino; Bugalú = Boogaloo
  Regional Mexican|Mexikanisch|Régional mexicain = Regional Mexicano, Mexican
    Mariachi; Norteño = Norteno; Banda; Ranchera = Rancheras; Corrido = Corridos; Tejano = Tex-Mex
    Duranguense
  Brazilian|Brasilianisch|Brésilien = Brazil, Brazilian Music
    Samba; Bossa Nova = Bossa; MPB = Música Popular Brasileira; Forró = Forro; Sertanejo
    Axé = Axe; Pagode; Tropicália = Tropicalia; Choro
  Latin Rock|Latin Rock|Rock latino = Rock en Español, Latin Alternative
    Latin Ska; Latin Metal; Latin Indie; Rock Nacional
  Tango and Iberian|Tango und Iberisches|Tango et ibérique
    Tango; Nuevo Tango = Electrotango; Flamenco; Fado; Nueva Canción = Nueva Cancion
    Andean|Andenmusik|Musique andine
Reggae = Reggae Music
  Roots Reggae
    Lovers Rock; Rocksteady; Reggae Fusion = Reggae-Pop; UK Reggae
  Dancehall = Dance Hall, Ragga
    Raggamuffin; Dancehall Pop|Dancehall-Pop|Pop dancehall
  Dub
    Dub Poetry; Ambient Dub
  Ska
    Two-Tone = Two Tone; Third Wave Ska; Traditional Ska
  Caribbean|Karibik|Caraïbes
    Calypso; Soca; Zouk; Kompa = Compas; Mento; Steelpan = Steel Drum
Classical|Klassik|Classique = Classical Music, Klassische Musik, Musique classique
  Early Music|Alte Musik|Musique ancienne
    Medieval|Mittelalter|Musique médiévale; Renaissance
    Gregorian Chant|Gregorianik|Chant grégorien = Chant, Plainchant
  Baroque|Barock|Baroque = Baroque Music
    Baroque Concerto|Barockkonzert|Concerto baroque; Oratorio|Oratorium|Oratorio
    Cantata|Kantate|Cantate
  Classical Period|Wiener Klassik|Période classique = Viennese Classical
    Sonata|Sonate|Sonate; Galante|Galanter Stil|Style galant
  Romantic Era|Romantik|Époque romantique = Romantic Classical, Romanticism
    Late Romantic|Spätromantik|Postromantisme; Nationalist|Nationalromantik|École nationale
    Lied|Kunstlied|Mélodie = Lieder, Art Song
  Modern Classical|Moderne|Musique moderne = Modern Composition, Twentieth Century Classical
    Impressionist|Impressionismus|Impressionnisme = Impressionism
    Minimalism|Minimalismus|Minimalisme = Minimalist
    Serialism|Serialismus|Sérialisme; Neoclassicism|Neoklassizismus|Néoclassicisme
    Contemporary Classical|Neue Musik|Musique contemporaine
    Neoclassical Piano|Neoklassik|Néoclassique = Neo-Classical, Neoclassical, Classical Crossover
  Orchestral|Orchestermusik|Musique orchestrale = Orchestra
    Symphony|Sinfonie|Symphonie = Symphonic; Concerto|Konzert|Concerto
    Ballet|Ballett|Musique de ballet; March|Marsch|Marche = Marches, Brass & Military
    Waltz|Walzer|Valse
  Chamber Music|Kammermusik|Musique de chambre = Chamber
    String Quartet|Streichquartett|Quatuor à cordes; Solo Piano|Klaviermusik|Piano solo = Piano
    Classical Guitar|Klassische Gitarre|Guitare classique
    Organ|Orgelmusik|Orgue; Wind Ensemble|Bläsermusik|Ensemble à vent
  Opera|Oper|Opéra
    Operetta|Operette|Opérette; Aria|Arie|Air d'opéra = Arias
  Choral|Chormusik|Musique chorale = Chorus, Choir
    Sacred Choral|Geistliche Chormusik|Chœur sacré = Sacred, Mass, Requiem
    A Cappella = Acappella, A Capella
Stage & Screen|Bühne und Film|Scène et écran = Soundtracks
  Soundtrack|Soundtrack|Bande originale = Soundtrack/Score, OST, Original Soundtrack
    Film Score|Filmmusik|Musique de film = Score, Movie, Film
    Television|Fernsehmusik|Télévision = TV, TV Soundtrack
    Video Game Music|Spielemusik|Musique de jeu vidéo = Game, Video Game, Games; Anime
    Bollywood = Filmi, Indian Film Music
    Trailer Music|Trailermusik|Musique de bande-annonce = Trailer
  Musical Theatre|Musical|Comédie musicale = Musical, Musicals, Showtunes, Broadway
    Film Musical|Filmmusical|Film musical; Rock Opera|Rockoper|Opéra rock; Vaudeville
  Cabaret|Kabarett|Cabaret
    Chanson = French Chanson; Burlesque; Revue
World|Weltmusik|Musiques du monde = World Music, Ethnic, International, Global
  African|Afrikanisch|Afrique = Africa, African Music
    Afrobeat; Afrobeats = Afro Pop, Afropop, Afro-Pop; Highlife; Amapiano; Kwaito
    Soukous = Congolese Rumba
    Desert Blues = Tuareg; Mbalax; Jùjú = Juju; Gnawa; Kizomba; Ethio-Jazz; Afro House; Bongo Flava
  Middle Eastern|Nahost|Moyen-Orient = Arabic, Arab
    Raï = Rai; Arabic Pop|Arabischer Pop|Pop arabe = Arab Pop
    Turkish|Türkisch|Turquie = Turkish Pop; Persian|Persisch|Perse = Iranian
    Israeli|Israelisch|Israël = Jewish, Hebrew
    Oriental Dance|Bauchtanz|Danse orientale = Belly Dance
  South Asian|Südasien|Asie du Sud = Indian, Indian Music
    Indian Classical|Indische Klassik|Musique classique indienne = Hindustani, Carnatic; Bhangra
    Qawwali; Ghazal
  East Asian|Ostasien|Asie de l'Est = Asian
    Chinese Traditional|Chinesisch traditionell|Chine traditionnelle = Chinese
    Japanese Traditional|Japanisch traditionell|Japon traditionnel = Japanese
    Enka; Gamelan; Trot; Korean Traditional|Koreanisch traditionell|Corée traditionnelle
  Pacific|Pazifik|Pacifique = Oceania
    Hawaiian|Hawaiianisch|Hawaï; Polynesian|Polynesisch|Polynésie
    Aboriginal|Aborigines|Aborigène = Didgeridoo
  Native American|Indigenes Amerika|Amérindien
    Powwow; Inuit
  European World|Europäische Weltmusik|Monde européen
    Romani|Roma-Musik|Musique tzigane = Gypsy; Greek|Griechisch|Grèce = Laïko, Rebetiko
    Russian Traditional|Russisch traditionell|Russie traditionnelle
    Musette = Accordion; Canzone Napoletana = Neapolitan
  Worldbeat = World Beat
    Global Fusion = Ethnic Fusion; Tribal Fusion
Easy Listening = Easy, Light Music
  Lounge = Lounge Music
    Exotica; Space Age Pop; Elevator Music|Fahrstuhlmusik|Musique d'ascenseur = Muzak
    Cocktail Lounge
  Vocal Standards|Gesangsstandards|Standards vocaux = Standards, Great American Songbook
    Crooner = Crooners; Duets|Duette|Duos = Duet
  Light Instrumental|Leichte Instrumentalmusik|Instrumental léger = Instrumental
    Beautiful Music; Orchestral Pop; Ballroom|Tanzmusik|Danse de salon = Ballroom Dance
    Light Orchestra|Unterhaltungsorchester|Orchestre léger
New Age = New-Age, Newage
  Meditation|Meditation|Méditation = Meditative, Relaxation
    Healing|Heilmusik|Musique de guérison; Yoga; Mantra = Kirtan
    Sleep|Schlafmusik|Sommeil = Sleep Music
  Nature Sounds|Naturklänge|Sons de la nature = Nature
    Rain|Regen|Pluie; White Noise|Weißes Rauschen|Bruit blanc; Birdsong|Vogelgesang|Chants d'oiseaux
  Instrumental New Age|Instrumentales New Age|New age instrumental
    Celtic New Age; New Age Piano; Native Flute|Indianerflöte|Flûte amérindienne
    Ethereal Wave = Ethereal
Gospel & Christian|Gospel und Christliches|Gospel et chrétien = Religious, Spiritual
  Gospel = Gospel Music
    Traditional Gospel; Contemporary Gospel = Urban Gospel; Southern Gospel
    Gospel Choir|Gospelchor|Chorale gospel; Spirituals
  Christian|Christlich|Chrétien = Christian Music, Christian/Gospel
    Contemporary Christian = CCM; Christian Rock; Worship = Praise & Worship, Praise and Worship
    Hymns|Kirchenlieder|Hymnes = Hymn; Christian Metal
  Devotional|Andachtsmusik|Dévotionnel
    Islamic|Islamisch|Islamique = Nasheed; Bhajan = Hindu; Buddhist|Buddhistisch|Bouddhiste
    Jewish Liturgical|Jüdisch-liturgisch|Liturgie juive
Children's|Kinder|Enfants = Children, Kids, Children's Music, Childrens, Kindermusik
  Children's Songs|Kinderlieder|Chansons pour enfants = Kids Music
    Nursery Rhymes|Reime|Comptines; Lullabies|Wiegenlieder|Berceuses = Lullaby
    Sing-Along|Mitsingen|À chanter ensemble
  Children's Stories|Kindergeschichten|Histoires pour enfants
    Fairy Tales|Märchen|Contes = Fairytale
    Radio Play for Children|Kinderhörspiel|Feuilleton pour enfants
Comedy & Spoken|Komik und Wort|Humour et parole
  Comedy|Komik|Humour = Humor, Humour, Satire, Parody, Pranks
    Stand-Up|Stand-up-Comedy|Stand-up = Stand-Up Comedy; Novelty|Scherzlied|Chanson fantaisiste
    Musical Comedy|Musikkabarett|Humour musical
  Spoken Word|Gesprochenes|Parole = Speech, Spoken, Sound Clip
    Audiobook|Hörbuch|Livre audio = Audiobooks; Poetry|Lyrik|Poésie; Podcast
    Radio Drama|Hörspiel|Pièce radiophonique = Audio Theatre
    Documentary|Dokumentation|Documentaire; Interview; Lecture|Vortrag|Conférence
Experimental|Experimentell|Expérimental = Avant-Garde, Avantgarde, Avant Garde, Experimental Music
  Noise = Noise Music
    Harsh Noise; Japanoise
  Electroacoustic|Elektroakustik|Électroacoustique
    Musique Concrète = Musique Concrete
    Field Recording|Feldaufnahme|Enregistrement de terrain = Field Recordings
    Sound Art|Klangkunst|Art sonore; Plunderphonics; Tape Music
  Improvised|Improvisation|Improvisation = Improvisational
    Electroacoustic Improvisation; Prepared Instruments|Präparierte Instrumente|Instruments préparés
Holiday|Feiertage|Fêtes = Seasonal, Holidays
  Christmas|Weihnachten|Noël = Xmas, Christmas Music
    Christmas Carols|Weihnachtslieder|Chants de Noël = Carols
    Christmas Pop|Weihnachtspop|Pop de Noël; Christmas Jazz|Weihnachtsjazz|Jazz de Noël
    Classical Christmas|Klassische Weihnacht|Noël classique
  Other Holidays|Andere Feste|Autres fêtes
    Halloween; Carnival|Karneval|Carnaval; Easter|Ostern|Pâques; New Year|Neujahr|Nouvel An
    Hanukkah|Chanukka|Hanoucca
"""

# How alike genres are across the tree; what lies below is alike a step less for each level.
AFFINITIES = [
    ("Rock", "Metal", 550), ("Rock", "Punk", 600), ("Metal", "Punk", 350), ("Rock", "Pop", 300),
    ("Rock", "Blues", 350), ("Rock", "Folk", 200), ("Rock", "Country", 150), ("Pop", "R&B", 350),
    ("Pop", "Electronic", 300), ("Pop", "Hip-Hop/Rap", 100), ("Pop", "Latin", 150),
    ("Pop", "Country", 100), ("Pop", "Easy Listening", 250), ("Pop", "Funk & Disco", 250),
    ("Hip-Hop/Rap", "R&B", 450), ("Hip-Hop/Rap", "Electronic", 50), ("Hip-Hop/Rap", "Reggae", 150),
    ("Hip-Hop/Rap", "Funk & Disco", 200), ("R&B", "Funk & Disco", 600), ("R&B", "Blues", 400),
    ("R&B", "Jazz", 150), ("R&B", "Gospel & Christian", 350), ("R&B", "Electronic", 0),
    ("Funk & Disco", "Electronic", 250), ("Funk & Disco", "Jazz", 250), ("Jazz", "Blues", 400),
    ("Jazz", "Easy Listening", 300), ("Jazz", "Classical", 100), ("Jazz", "Latin", 100),
    ("Blues", "Country", 200), ("Blues", "Folk", 250), ("Country", "Folk", 500),
    ("Folk", "World", 350), ("Latin", "World", 350), ("Latin", "Reggae", 150),
    ("Reggae", "World", 250), ("Classical", "Stage & Screen", 350), ("Classical", "New Age", 150),
    ("Classical", "Experimental", 150), ("Electronic", "New Age", 150),
    ("Electronic", "Experimental", 250), ("Easy Listening", "Stage & Screen", 250),
    ("Easy Listening", "New Age", 200), ("Children's", "Comedy & Spoken", 0),
    # across roots, but close by nature
    ("Dance Pop", "EDM", 500), ("Pop EDM", "Dance Pop", 650), ("Electropop", "Synth-Pop", 700),
    ("Synth-Pop", "New Wave", 650), ("Indie Pop", "Indie Rock", 650), ("Pop Rock", "Rock", 500),
    ("Pop Rock", "Pop Punk", 500), ("Hard Rock", "Heavy Metal", 700), ("Hard Rock", "Metal", 550),
    ("Glam Metal", "Heavy Metal", 600), ("Stoner Rock", "Stoner Metal", 700),
    ("Industrial Rock", "Industrial", 500), ("Industrial Metal", "Industrial", 450),
    ("Gothic Rock", "Darkwave", 700), ("Gothic Rock", "Gothic Metal", 500),
    ("Progressive Rock", "Progressive Metal", 500), ("Jazz Rock", "Jazz Fusion", 700),
    ("Rap Rock", "Rap Metal", 650), ("Post-Grunge", "Alternative Metal", 500),
    ("Alternative Rock", "Indie Rock", 600), ("Classic Rock", "Hard Rock", 600),
    ("Post-Punk", "Punk Rock", 500), ("Ska", "Ska Punk", 600),
    ("Blues Rock", "Blues", 550), ("Folk Rock", "Folk", 550), ("Country Rock", "Rock", 400),
    ("Country Pop", "Pop", 400), ("Americana", "Folk", 500), ("Folk Pop", "Indie Pop", 500),
    ("Rockabilly", "Country", 300), ("House", "Disco", 300), ("House", "EDM", 600),
    ("Progressive Electro House", "Progressive House", 750), ("Electro House", "Tech House", 650),
    ("Festival Trap", "Trap", 350), ("Trance", "EDM", 500), ("House", "Techno", 500),
    ("Trip-Hop", "Alternative Hip Hop", 350), ("Lo-Fi Beats", "Instrumental Hip Hop", 700),
    ("Chillout", "Lounge", 400), ("Ambient", "New Age", 550), ("Grime", "Grime Instrumental", 700),
    ("Pop Rap", "Pop", 350), ("Jazz Rap", "Jazz", 300), ("Pop Rap", "Hip Hop", 650),
    ("Hip Pop", "Dance Pop", 500), ("Urban Contemporary", "Pop", 400), ("Hip Pop", "Hip Hop", 450),
    ("Neo Soul", "Soul", 650), ("Contemporary R&B", "Hip Hop", 400),
    ("Trap Soul", "Trap", 500), ("Soul", "Gospel", 400), ("Soul Jazz", "Soul", 400),
    ("Jazz-Funk", "Jazz Fusion", 650), ("Acid Jazz", "Funk", 500), ("Nu Jazz", "Downtempo", 400),
    ("Electro-Funk", "Funk", 500), ("Italo Disco", "Disco", 600), ("Jump Blues", "Blues", 550),
    ("Boogie-Woogie", "Rock and Roll", 400), ("Latin Pop", "Pop", 450),
    ("Latin Pop", "Latin Urban", 550), ("Latin Hip Hop", "Hip Hop", 550),
    ("Latin Trap", "Trap", 600), ("Reggaeton", "Dancehall", 550), ("Latin Rock", "Rock", 500),
    ("Latin Jazz", "Tropical", 400), ("Bossa Nova", "Latin Jazz", 500),
    ("Latin R&B", "Contemporary R&B", 550), ("Tropical House", "Dance Pop", 400),
    ("Reggae Fusion", "Pop", 300), ("Afrobeats", "Dancehall", 400), ("Afrobeat", "Funk", 400),
    ("Afro House", "House", 600), ("Bollywood", "South Asian", 500),
    ("Film Score", "Orchestral", 500),
    ("Neoclassical Piano", "Ambient", 350), ("Neoclassical Piano", "New Age Piano", 600),
    ("Rock Opera", "Rock", 350), ("Traditional Pop", "Vocal Standards", 650),
    ("Vocal Jazz", "Vocal Standards", 600), ("Chanson", "French Pop", 550),
    ("Christian Rock", "Rock", 400), ("Contemporary Christian", "Pop", 300),
    ("Christian Hip Hop", "Christian", 400), ("Celtic", "Celtic Rock", 500),
    ("Celtic", "Celtic New Age", 500),
    ("Drone", "Experimental", 400), ("Noise Rock", "Noise", 400), ("Electroacoustic", "IDM", 300),
    ("Country Blues", "Country", 300), ("J-Rock", "J-Pop", 500), ("Turkish", "Anatolian Rock", 400),
]

# Scores; see the manual of the host's data for what each of them means.
RULE = {"default": -1000, "inside": [850, 800], "around": [850, 600], "siblings": [450, 800],
        "step": 25, "apart": -1000, "affinity_step": 100}

FIRST_ID = 20000
ROOT_WIDTH, GENRE_WIDTH = 256, 16


def main():
    tree = musical_data.read_tree(TREE, FIRST_ID, ROOT_WIDTH, GENRE_WIDTH)
    musical_data.write_tree("genres", "genre", tree, RULE, AFFINITIES)


if __name__ == "__main__":
    main()

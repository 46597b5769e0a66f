// The statement of More-Like-This in readable form; the compiler enciphers it, and the library
// holds nothing else of it.
//
// A PER limit keeps tracks of an artist by chance and not by score, so WHERE must already leave
// only what is fit for the list; ORDER then ranks that. A seed may lack any of its data: a term
// that has no opinion scores 0, which adds nothing to the ranking and in WHERE must let a track
// pass. Whether a list has an opinion is asked by equality, which scores 1000 or -1000 wherever
// there are values; likeness itself may well come to 0. A mood profile has no equality, and its
// likeness is hardly ever exactly 0.
//
// The numbers were chosen by measuring (bench/measure_morelikethis.cc): the list shall be as close
// in tempo and mood as it can without leaving the seed's corner of the genre tree, and still fill
// up in a library of a few hundred tracks.
#include "pdl/playlist_morelikethis.h"
#include "zvsdk_stored_text.h"

namespace {

constexpr auto s_stored = zvsdk::stored_text(
    "GENERATE PLAYLIST WHERE"
    // The same corner of the genre tree, in no contrary mood and at about the same speed;
    " ((ZV_Genre LIKE SEED > 700 OR ZV_Genre = SEED = 0)"
    " AND (ZV_Mood LIKE SEED > 50 OR ZV_Mood LIKE SEED = 0)"
    " AND (ZV_Tempo LIKE SEED > 880 OR ZV_Tempo = SEED = 0))"
    // or the very genre, with more room for mood and speed, so that a rare one fills a list;
    " OR ((ZV_Genre = SEED OR ZV_Genre = SEED = 0)"
    " AND (ZV_Mood LIKE SEED > -20 OR ZV_Mood LIKE SEED = 0)"
    " AND (ZV_Tempo LIKE SEED > 820 OR ZV_Tempo = SEED = 0))"
    // or any genre in the same mood at the same speed.
    " OR (ZV_Mood LIKE SEED > 600 AND ZV_Tempo LIKE SEED > 900)"
    // What makes a track alike to a listener. Tempo scores lie close together, hence their weight.
    // The artist matters little, so that the list does not turn into his collected works, but is
    // all that some seeds have.
    " ORDER ZV_Genre LIKE SEED * 11 + ZV_Mood LIKE SEED * 3 + ZV_Tempo LIKE SEED * 16"
    " + ZV_Era LIKE SEED + ZV_ArtistName = SEED"
    // Variety: near equals change places from run to run, unless the random option is set.
    " + RAND(200, %s)"
    " LIMIT %s PER ZV_ArtistName, %s PER ZV_AlbumName, %s RESULTS");

}  // namespace

const char* const playlist_morelikethis_template = s_stored.data();

/*
 * playlist_morelikethis.h: the statement of More-Like-This, as a stored text that only the host's
 * serialization table makes readable. Decoded it is a format for four texts, in this order: the
 * random option, the most tracks of an artist, the most of an album, the most in all.
 */
#ifndef PLAYLIST_MORELIKETHIS_H
#define PLAYLIST_MORELIKETHIS_H

extern const char* const playlist_morelikethis_template;

#endif

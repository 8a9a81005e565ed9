// The promotion report: tells a web endpoint that this installation was
// started through a promotion channel, with the channel's game and user
// codes, the local IPv4 address and the adapter hardware address.
//
// Switches: "ini/PublicSet.ini" [Setting] Public and "ini/Popularize.ini"
// [Popular] Enable, both non-zero. Endpoint and codes: [Popular] Server,
// Action, Gamecode (default "29"), Usercode (default "0").
#pragma once

// Checks the two switches and, when both are on, starts a worker that builds
// and posts the report for event nPostType. Returns at once; the caller is
// never told whether the report went out.
void PromotionReport(int nPostType);

// Fills pAddress (6 bytes) with the hardware address of the last adapter the
// system lists. It is cleared first, so that it stays zero when no adapter
// could be read. A failing query writes an assertion line to the debug log.
void AdapterMacGet(unsigned char* pAddress);

// Appends the report fields that follow "Posttype=%d" to szBody (a buffer
// of nSize bytes, cut at its end), in their fixed order and nothing
// URL-encoded: "&LocalIP=<dotted quad>" only when szLocalIp is not null,
// "&MAC=" and twelve upper-case hex digits of pMac, "&Gamecode=",
// "&Usercode=".
void PromotionFieldsAppend(char* szBody, int nSize, const char* szLocalIp, const unsigned char* pMac,
                           const char* szGameCode, const char* szUserCode);

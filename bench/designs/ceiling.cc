// The ceiling: an idealised event loop that does nothing but this simulator's scheduling rules.
//
// A handler call schedules an event of its output pin; a pending event of the pin at or after the new time
// takes the new state instead; several events of one pin may be pending; an event that finds another state
// seen at its time is a hazard; a change calls every fed gate.  Timing wheel of linked 8-byte events, 16-byte
// gates with packed inputs and a table look-up.  No strengths, no observers, no spike check, no priorities,
// no checks of registers.
//
//   ceiling FLAT VECTORS        FLAT: written by work.py; the time is CPU seconds
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <queue>
#include <string>
#include <vector>
using namespace std;
using u8 = uint8_t;
using u16 = uint16_t;
using u32 = uint32_t;
using u64 = uint64_t;

// values: 0, 1, 2 = x.  packed input byte: a | b<<2  (dff: c | d<<2 | lastc<<4)
static u8 T[8][16];
enum { AND, NAND, OR, NOR, XOR, XNOR, NOT, BUF, DFF };
static u8 inv(u8 v) { return v == 2 ? 2 : v ^ 1; }
static void tables() {
    for (int b = 0; b < 4; b++)
        for (int a = 0; a < 4; a++) {
            u8 x = min(a, 2), y = min(b, 2), i = a | b << 2;
            u8 an = (x == 0 || y == 0) ? 0 : (x == 1 && y == 1) ? 1 : 2;
            u8 o = (x == 1 || y == 1) ? 1 : (x == 0 && y == 0) ? 0 : 2;
            u8 xr = (x == 2 || y == 2) ? 2 : x ^ y;
            T[AND][i] = an;
            T[NAND][i] = inv(an);
            T[OR][i] = o;
            T[NOR][i] = inv(o);
            T[XOR][i] = xr;
            T[XNOR][i] = inv(xr);
            T[NOT][i] = inv(x);
            T[BUF][i] = x;
        }
}
struct Gate {  // 16 bytes: four to a cache line
    u8 in;     // packed inputs
    u8 type;
    u8 cur, pend;  // output value; pending value (3 = none)
    u8 rise, fall;
    u8 touched, pad;
    u32 when;  // time of the pending event (low 32 bits)
    u32 fo;    // first fan-out index
};
int main(int argc, char** argv) {
    tables();
    FILE* f = fopen(argv[1], "r");
    long V = atol(argv[2]);
    u32 s = argc > 3 ? strtoul(argv[3], 0, 16) : 0x12345678;
    auto c0 = clock();
    int nn, ng, ni, no, ck, rs, N;
    if (fscanf(f, "%d %d %d %d %d %d %d", &nn, &ng, &ni, &no, &ck, &rs, &N) != 7) return 1;
    // number the gates; PI "gates" are appended after the real ones
    vector<int> pi(ni), po;
    for (auto& x : pi)
        if (fscanf(f, "%d", &x) != 1) return 1;
    {
        int c;
        while ((c = fgetc(f)) != '\n')
            ;
        string l;
        while ((c = fgetc(f)) != '\n') l += (char)c;
        char* p = l.data();
        char* e;
        for (;;) {
            long v = strtol(p, &e, 10);
            if (e == p) break;
            po.push_back(v);
            p = e;
        }
    }
    vector<Gate> g(ng + ni + 2 + 1);
    vector<int> drv(nn, -1);
    struct R {
        int t, r, f, y, a, b;
    };
    vector<R> r(ng);
    const char* nm[] = {"and", "nand", "or", "nor", "xor", "xnor", "not", "buf", "dff"};
    int maxd = 0;
    for (int i = 0; i < ng; i++) {
        char t[8];
        if (fscanf(f, "%7s %d %d %d %d %d", t, &r[i].r, &r[i].f, &r[i].y, &r[i].a, &r[i].b) != 6) return 1;
        for (int k = 0; k < 9; k++)
            if (!strcmp(t, nm[k])) r[i].t = k;
        drv[r[i].y] = i;
        maxd = max({maxd, r[i].r, r[i].f});
    }
    for (int i = 0; i < ni; i++) drv[pi[i]] = ng + i;
    int gck = -1, grs = -1;
    if (ck >= 0) {
        drv[ck] = gck = ng + ni;
        drv[rs] = grs = ng + ni + 1;
    }
    int tot = ng + ni + 2;
    vector<u32> fo;
    vector<vector<u32>> tmp(tot);
    for (int i = 0; i < ng; i++) {  // fan-out entry: gate<<1 | pin
        tmp[drv[r[i].a]].push_back(u32(i) << 1);
        if (r[i].b >= 0) tmp[drv[r[i].b]].push_back(u32(i) << 1 | 1);
    }
    for (int i = 0; i < tot; i++) {
        g[i].fo = fo.size();
        fo.insert(fo.end(), tmp[i].begin(), tmp[i].end());
    }
    g[tot].fo = fo.size();
    for (int i = 0; i < tot; i++) {
        g[i].type = i < ng ? r[i].t : BUF;
        g[i].cur = 2;
        g[i].pend = 3;
        g[i].touched = 0;
        g[i].when = 0;
        g[i].in = 2 | 2 << 2 | (2 << 4);
        if (i < ng) {
            g[i].rise = r[i].r;
            g[i].fall = r[i].f;
        }
    }

    auto c1 = clock();
    int W = 1;
    while (W <= maxd) W *= 2;
    u32 M = W - 1;
    struct Ev {
        u32 gate;
        u32 next;
    };  // gate<<2 | state
    struct K {
        u32 newest, newtime;
        u32 seen;
        u8 cur, seenv;
        u8 pad[2];
    };
    vector<K> kk(tot, K{~0u, 0, ~0u, 2, 2, {0, 0}});
    vector<Ev> pool;
    pool.reserve(1 << 16);
    u32 freel = ~0u;
    vector<u32> head(W, ~0u), tail(W, ~0u);
    vector<u64> occ((W + 63) / 64, 0);
    u64 pin = 0, calls = 0, repl = 0, changes = 0, force = 0, live = 0;
    Gate* G = g.data();
    const u32* F = fo.data();
    u32 now = 0;
    auto sched = [&](u32 id, u8 v) {
        Gate& q = G[id];
        K& k = kk[id];
        u32 d = v == 1 ? q.rise : v == 0 ? q.fall : (q.rise + q.fall) / 2;
        u32 t = now + d;
        calls++;
        if (k.newest != ~0u && k.newtime >= t) {
            Ev& e = pool[k.newest];
            e.gate = id << 2 | v;
            repl++;
            return;
        }
        u32 n;
        if (freel != ~0u) {
            n = freel;
            freel = pool[n].next;
        } else {
            n = pool.size();
            pool.push_back({});
        }
        pool[n] = {id << 2 | v, ~0u};
        u32 slot = t & M;
        if (head[slot] == ~0u) {
            head[slot] = n;
            occ[slot >> 6] |= 1ull << (slot & 63);
        } else
            pool[tail[slot]].next = n;
        tail[slot] = n;
        k.newest = n;
        k.newtime = t;
        live++;
    };
    auto fan = [&](u32 id, u8 v) {
        for (u32 k = G[id].fo, e = G[id + 1].fo; k < e; k++) {
            u32 x = F[k];
            Gate& d = G[x >> 1];
            u32 sh = (x & 1) * 2;
            if (d.type == DFF) {
                if (!(x & 1)) {
                    u8 lc = d.in & 3;
                    d.in = (d.in & ~3) | v;
                    if ((lc == 0 || v == 1)) sched(x >> 1, d.in >> 2 & 3);
                } else
                    d.in = (d.in & ~(3u << 2)) | v << 2;
                continue;
            }
            d.in = (d.in & ~(3u << sh)) | v << sh;
            sched(x >> 1, T[d.type][d.in & 15]);
        }
    };
    auto forceit = [&](u32 id, u8 v) {
        if (kk[id].cur == v) return;
        kk[id].cur = v;
        force++;
        fan(id, v);
    };
    auto run_until = [&](u32 end) {
        while (live) {
            u32 st = (now + 1) & M;
            bool got = false;
            u32 k = 0;
            for (u32 w = 0; w <= occ.size(); w++) {
                u32 wi = ((st >> 6) + w) & (occ.size() - 1);
                u64 o = occ[wi];
                if (w == 0)
                    o &= ~0ull << (st & 63);
                else if (w == occ.size())
                    o &= (1ull << (st & 63)) - 1;
                if (o) {
                    u32 slot = wi * 64 + __builtin_ctzll(o);
                    k = (slot - st) & M;
                    got = true;
                    break;
                }
            }
            if (!got) break;
            u32 t = now + 1 + k;
            if (t >= end) {
                now = end;
                return;
            }
            now = t;
            u32 slot = t & M;
            while (head[slot] != ~0u) {
                u32 n = head[slot];
                u32 id = pool[n].gate >> 2;
                u8 v = pool[n].gate & 3;
                K& q = kk[id];
                pin++;
                bool hz = q.seen == t && q.seenv != v;
                if (!hz) {
                    q.seen = t;
                    q.seenv = v;
                    if (q.cur != v) {
                        q.cur = v;
                        changes++;
                        fan(id, v);
                    }
                }
                head[slot] = pool[n].next;
                pool[n].next = freel;
                freel = n;
                live--;
                if (q.newest == n) q.newest = ~0u;
            }
            tail[slot] = ~0u;
            occ[slot >> 6] &= ~(1ull << (slot & 63));
        }
        now = end;
    };
    u32 H = ck >= 0 ? N / 2 : N;
    u32 sig = 0;
    vector<u8> in(ni);
    if (ck >= 0) {
        forceit(gck, 0);
        run_until(H);
        now = H;
        forceit(gck, 1);
        run_until(N);
    }
    for (long k = 0; k < V; k++) {
        u32 T0 = u32(k + 1) * N;
        run_until(T0);
        now = T0;
        for (int i = 0; i < ni; i++) {
            if (i % 32 == 0) {
                s ^= s << 13;
                s ^= s >> 17;
                s ^= s << 5;
            }
            in[i] = s >> (i % 32) & 1;
        }
        for (int i = ni - 1; i >= 0; i--) forceit(ng + i, in[i]);
        if (ck >= 0) {
            forceit(grs, k >= 2);
            forceit(gck, 0);
            run_until(T0 + H);
            now = T0 + H;
            forceit(gck, 1);
            run_until(T0 + N);
        } else
            run_until(T0 + N);
        for (int n : po) sig = (sig << 1 | sig >> 31) ^ (kk[drv[n]].cur == 1);
    }
    auto c2 = clock();
    double t = double(c2 - c1) / CLOCKS_PER_SEC;
    printf("run %.3f s pin %llu changes %llu force %llu calls %llu replaced %llu signature %08x\n", t,
           (unsigned long long)pin, (unsigned long long)changes, (unsigned long long)force,
           (unsigned long long)calls, (unsigned long long)repl, sig);
}

// Test-only shim. Lets code compiled by clang with
//     -fobjc-runtime=gnustep-1.9 -fobjc-legacy-dispatch -fobjc-arc -fblocks
// run on Debian's GCC libobjc (libobjc.so.4) and gnustep-base, neither of which knows ARC, __weak, blocks as
// objects or non-fragile ivars. Link with -Wl,--wrap=__objc_exec_class.
// Written from clang's own output (-S -emit-llvm); uses only libobjc's public API otherwise.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <unordered_map>
#include <unordered_set>
#include <vector>

extern "C" {
struct Object {
    struct Class_* isa;
};
typedef Object* id;
typedef struct Class_* Class;
struct Sel {
    void* uid;
    char const* types;
};
typedef Sel const* SEL;
typedef id (*IMP)(id, SEL, ...);
struct Super {
    id self;
    Class cls;
};

struct Ivar {
    char const* name;
    char const* type;
    int32_t offset;
};
struct IvarList {
    int32_t count;
    Ivar list[1];
};
struct ProtoList;
struct Proto {
    uintptr_t isa;
    char const* name;
    ProtoList* adopts;
    void* inst;
    void* cls;
    void* oinst;
    void* ocls;
    void* props;
    void* oprops;
};
struct ProtoList {
    ProtoList* next;
    size_t count;
    Proto* list[1];
};
struct Class_ { // the gnustep-1.x class; its first 13 words are GCC's
    Class isa;
    Class super;
    char const* name;
    long version;
    unsigned long info;
    long instance_size;
    IvarList* ivars;
    void* methods;
    void* dtable;
    Class subclasses;
    Class sibling;
    ProtoList* protocols;
    void* gc;
    long abi_version;
    int32_t** ivar_offsets;
    void* properties;
    long strong_ptrs;
    long weak_ptrs;
};
struct Category {
    char const* name;
    char const* cls;
    void* inst;
    void* clsm;
    ProtoList* protocols;
};
struct Statics {
    char const* cls;
    id instances[1];
};
struct Symtab {
    unsigned long nsel;
    Sel* sels;
    uint16_t ncls;
    uint16_t ncat;
    void* defs[1];
};
struct Module {
    unsigned long version, size;
    char const* name;
    Symtab* symtab;
};

void __real___objc_exec_class(Module*);
IMP objc_msg_lookup(id, SEL);
IMP objc_msg_lookup_super(Super*, SEL);
Class objc_lookUpClass(char const*);
Class objc_allocateClassPair(Class, char const*, size_t);
void objc_registerClassPair(Class);
bool class_addMethod(Class, SEL, IMP, char const*);
size_t class_getInstanceSize(Class);
void* class_getInstanceMethod(Class, SEL);
IMP method_setImplementation(void*, IMP);
SEL sel_registerName(char const*);
SEL sel_registerTypedName(char const*, char const*);
int NSDecrementExtraRefCountWasZero(id); // gnustep-base
// gnustep-base (GCC build) exports one-word symbols of these names, so the executable must own full-size ones.
Class_* _NSConcreteStackBlock[32];
Class_* _NSConcreteGlobalBlock[32];
Class_* _NSConcreteMallocBlock[32];
Class_* _NSConcreteAutoBlock[32];
Class_* _NSConcreteFinalizingBlock[32];
Class_* _NSConcreteWeakBlockVariable[32];
}

// ---------------------------------------------------------------- loading
namespace {
bool g_debug()
{
    static bool b = getenv("ARCSHIM_DEBUG");
    return b;
}
void fix_protocols(ProtoList* l)
{
    for (; l; l = l->next)
        for (size_t i = 0; i < l->count; ++i)
            if (Proto* p = l->list[i]; p && p->isa == 3) {
                p->isa = 2;
                fix_protocols(p->adopts);
            }
}
bool size_class(Class c, std::vector<Class> const& mod)
{ // give the class its real instance size and ivar offsets
    if (c->instance_size > 0)
        return true;
    long base = 0;
    if (c->super) {
        char const* sn = reinterpret_cast<char const*>(c->super);
        Class s = nullptr;
        for (Class m : mod)
            if (!strcmp(m->name, sn)) {
                if (!size_class(m, mod))
                    return false;
                s = m;
                base = m->instance_size;
            }
        if (!s) {
            s = objc_lookUpClass(sn);
            if (!s)
                return false;
            base = static_cast<long>(class_getInstanceSize(s));
        }
    }
    c->instance_size = base - c->instance_size;
    if (c->ivars)
        for (int i = 0; i < c->ivars->count; ++i) {
            c->ivars->list[i].offset += base;
            if (c->ivar_offsets && c->ivar_offsets[i])
                *c->ivar_offsets[i] = c->ivars->list[i].offset;
        }
    c->info &= 3;
    c->isa->info &= 3; // keep CLS_CLASS / CLS_META; GCC's runtime reads the rest as its own state
    return true;
}
std::vector<Module*>& pending()
{
    static std::vector<Module*> v;
    return v;
}
bool try_load(Module* m)
{
    Symtab* t = m->symtab;
    if (t) {
        std::vector<Class> cs;
        for (int i = 0; i < t->ncls; ++i)
            cs.push_back(static_cast<Class>(t->defs[i]));
        for (Class c : cs)
            if (!size_class(c, cs))
                return false;
        for (Class c : cs) {
            fix_protocols(c->protocols);
            fix_protocols(c->isa->protocols);
        }
        for (int i = 0; i < t->ncat; ++i) {
            // clang (ABI 10) counts a nameless pseudo category that carries the module's protocols
            auto* k = static_cast<Category*>(t->defs[t->ncls + i]);
            if (k)
                fix_protocols(k->protocols);
        }
    }
    Module* out = new Module { 8, sizeof(Module), m->name, t };
    if (g_debug())
        fprintf(stderr, "[arcshim] load %s v%lu\n", m->name, m->version);
    __real___objc_exec_class(out);
    return true;
}
void bootstrap();
}
extern "C" void __wrap___objc_exec_class(Module* m)
{
    bootstrap();
    if (m->version == 8) {
        __real___objc_exec_class(m);
        return;
    }
    pending().push_back(m);
    for (bool again = true; again;) {
        again = false;
        for (size_t i = 0; i < pending().size(); ++i)
            if (try_load(pending()[i])) {
                pending().erase(pending().begin() + i);
                again = true;
                break;
            }
    }
}

// ---------------------------------------------------------------- dispatch
namespace {
struct Slot {
    Class owner;
    Class cached_for;
    char const* types;
    int version;
    IMP method;
};
thread_local Slot g_slot;
}
extern "C" Slot* objc_msg_lookup_sender(id* self, SEL s, id)
{
    g_slot.method = objc_msg_lookup(*self, s);
    return &g_slot;
}
extern "C" Slot* objc_slot_lookup_super(Super* s, SEL sel)
{
    g_slot.method = objc_msg_lookup_super(s, sel);
    return &g_slot;
}
template<class R, class... A>
static R send(id o, SEL s, A... a)
{
    return reinterpret_cast<R (*)(id, SEL, A...)>(objc_msg_lookup(o, s))(o, s, a...);
}

namespace {
// Asking for a selector takes the runtime's lock, which a thread holds during +initialize. One that waits for
// weak_lock() there must not be waited for under weak_lock(), so these are asked for once, before there are threads.
struct Selectors {
    SEL retain = sel_registerName("retain");
    SEL release = sel_registerName("release");
    SEL autorelease = sel_registerName("autorelease");
    SEL dealloc = sel_registerName("dealloc");
};
Selectors const& selectors()
{
    static Selectors const s;
    return s;
}
}

// ---------------------------------------------------------------- blocks runtime (the published Block ABI)
// Owned here because gnustep-base (GCC build) exports an old one that never copies blocks without copy helpers.
namespace {
enum { REFS = 0xffff, NEEDS_FREE = 1 << 24, HAS_HELPERS = 1 << 25, IS_GLOBAL = 1 << 28 };
struct BlockDesc {
    unsigned long reserved, size;
    void (*copy)(void*, void const*);
    void (*dispose)(void const*);
};
struct Block {
    void* isa;
    std::atomic<int> flags;
    int reserved;
    void* invoke;
    BlockDesc* d;
};
struct Byref {
    void* isa;
    Byref* forwarding;
    std::atomic<int> flags;
    uint32_t size;
    void (*keep)(Byref*, Byref*);
    void (*destroy)(Byref*);
};
}
extern "C" {
id objc_retain(id);
void objc_release(id);
void* _Block_copy(void const* p)
{
    auto* b = static_cast<Block*>(const_cast<void*>(p));
    if (!b || b->flags & IS_GLOBAL)
        return b;
    if (b->flags & NEEDS_FREE) {
        ++b->flags;
        return b;
    }
    auto* n = static_cast<Block*>(malloc(b->d->size));
    memcpy(static_cast<void*>(n), b, b->d->size);
    n->isa = _NSConcreteMallocBlock;
    n->flags = (b->flags & ~REFS) | NEEDS_FREE | 1;
    if (n->flags & HAS_HELPERS)
        n->d->copy(n, b);
    return n;
}
void _Block_release(void const* p)
{
    auto* b = static_cast<Block*>(const_cast<void*>(p));
    if (!b || b->flags & IS_GLOBAL || !(b->flags & NEEDS_FREE) || (--b->flags & REFS))
        return;
    if (b->flags & HAS_HELPERS)
        b->d->dispose(b);
    free(b);
}
void _Block_object_assign(void* to, void const* from, int what)
{
    auto** dst = static_cast<void**>(to);
    if (what & 128) {
        *dst = const_cast<void*>(from);
        return;
    } // inside a __block variable: plain copy
    if (what & 8) { // a __block variable itself
        auto* r = static_cast<Byref*>(const_cast<void*>(from))->forwarding;
        if (r->flags & NEEDS_FREE)
            ++r->flags;
        else {
            auto* n = static_cast<Byref*>(malloc(r->size));
            memcpy(static_cast<void*>(n), r, r->size);
            n->flags = r->flags | NEEDS_FREE | 2;
            n->forwarding = n;
            r->forwarding = n; // one count for the block, one for the frame
            if (r->flags & HAS_HELPERS)
                r->keep(n, r);
            r = n;
        }
        *dst = r;
    } else if ((what & 7) == 7)
        *dst = _Block_copy(from);
    else
        *dst = objc_retain(static_cast<id>(const_cast<void*>(from)));
}
void _Block_object_dispose(void const* p, int what)
{
    if (what & 128)
        return;
    if (what & 8) {
        auto* r = static_cast<Byref*>(const_cast<void*>(p))->forwarding;
        if (!(r->flags & NEEDS_FREE) || (--r->flags & REFS))
            return;
        if (r->flags & HAS_HELPERS)
            r->destroy(r);
        free(r);
    } else if ((what & 7) == 7)
        _Block_release(p);
    else
        objc_release(static_cast<id>(const_cast<void*>(p)));
}
}

// ---------------------------------------------------------------- blocks as objects
namespace {
// A block's isa is the symbol itself. Only heap blocks are counted; retain of a stack block is a no-op.
bool on_heap(id b)
{
    return reinterpret_cast<void*>(b->isa) == static_cast<void*>(_NSConcreteMallocBlock);
}
id blk_retain(id b, SEL)
{
    return on_heap(b) ? static_cast<id>(_Block_copy(b)) : b;
}
void blk_release(id b, SEL)
{
    if (on_heap(b))
        _Block_release(b);
}
id blk_copy(id b, SEL)
{
    return static_cast<id>(_Block_copy(b));
}
id blk_copyz(id b, SEL, void*)
{
    return static_cast<id>(_Block_copy(b));
}
void blk_dealloc(id, SEL) { }
unsigned long blk_rc(id, SEL)
{
    return 1;
}
bool is_block(id o)
{
    auto* c = reinterpret_cast<Class_*>(o->isa);
    return c == reinterpret_cast<Class_*>(&_NSConcreteStackBlock)
        || c == reinterpret_cast<Class_*>(&_NSConcreteGlobalBlock)
        || c == reinterpret_cast<Class_*>(&_NSConcreteMallocBlock);
}
void make_block_class(char const* name, void* where, Class nsobject)
{
    Class c = objc_allocateClassPair(nsobject, name, 0);
    class_addMethod(c, sel_registerName("retain"), (IMP)blk_retain, "@16@0:8");
    class_addMethod(c, sel_registerName("release"), (IMP)blk_release, "v16@0:8");
    class_addMethod(c, sel_registerName("copy"), (IMP)blk_copy, "@16@0:8");
    class_addMethod(c, sel_registerName("copyWithZone:"), (IMP)blk_copyz, "@24@0:8^v16");
    class_addMethod(c, sel_registerName("dealloc"), (IMP)blk_dealloc, "v16@0:8");
    class_addMethod(c, sel_registerName("retainCount"), (IMP)blk_rc, "Q16@0:8");
    objc_registerClassPair(c);
    send<id>(reinterpret_cast<id>(c), sel_registerName("class")); // +initialize, installs its dispatch table
    memcpy(where, c, 13 * sizeof(void*)); // a block's isa points at this symbol
}

// ---------------------------------------------------------------- weak references and release
// Never destroyed: constructors of other files run before this file's, and weak variables outlive main().
std::recursive_mutex& weak_lock()
{
    static auto* m = new std::recursive_mutex;
    return *m;
}
std::unordered_map<id, std::unordered_set<id*>>& refs()
{
    static auto* m = new std::unordered_map<id, std::unordered_set<id*>>;
    return *m;
}
std::unordered_set<id>& dying()
{
    static auto* s = new std::unordered_set<id>;
    return *s;
}
void unref(id* where)
{
    if (id o = *where) {
        auto it = refs().find(o);
        if (it != refs().end()) {
            it->second.erase(where);
            if (it->second.empty())
                refs().erase(it);
        }
    }
}
// Associated objects, which GCC's runtime lacks: kept by object and key, let go after its -dealloc.
std::unordered_map<id, std::unordered_map<void const*, id>>& associations()
{
    static auto* m = new std::unordered_map<id, std::unordered_map<void const*, id>>;
    return *m;
}
void obj_release(id self, SEL)
{
    {
        std::lock_guard l(weak_lock());
        if (!NSDecrementExtraRefCountWasZero(self))
            return;
        dying().insert(self);
        if (auto it = refs().find(self); it != refs().end()) {
            for (id* w : it->second)
                *w = nullptr;
            refs().erase(it);
        }
    }
    std::unordered_map<void const*, id> associated;
    {
        std::lock_guard l(weak_lock());
        if (auto it = associations().find(self); it != associations().end()) {
            associated = it->second;
            associations().erase(it);
        }
    }
    send<void>(self, selectors().dealloc);
    for (auto& [key, object] : associated)
        if (object)
            send<void>(object, selectors().release);
    std::lock_guard l(weak_lock());
    dying().erase(self);
}
bool g_booted = false;
void bootstrap()
{
    if (g_booted)
        return;
    Class ns = objc_lookUpClass("NSObject");
    if (!ns)
        return;
    g_booted = true;
    (void)selectors();
    make_block_class("__ShimStackBlock", &_NSConcreteStackBlock, ns);
    make_block_class("__ShimGlobalBlock", &_NSConcreteGlobalBlock, ns);
    make_block_class("__ShimMallocBlock", &_NSConcreteMallocBlock, ns);
    method_setImplementation(class_getInstanceMethod(ns, sel_registerName("release")), (IMP)obj_release);
}
}
extern "C" {
id objc_retainBlock(id b)
{
    return b ? static_cast<id>(_Block_copy(b)) : b;
}
id objc_retain(id o)
{
    return o ? send<id>(o, selectors().retain) : o;
}
void objc_release(id o)
{
    if (o)
        send<void>(o, selectors().release);
}
id objc_autorelease(id o)
{
    return o ? send<id>(o, selectors().autorelease) : o;
}
id objc_retainAutorelease(id o)
{
    return objc_autorelease(objc_retain(o));
}
id objc_autoreleaseReturnValue(id o)
{
    return objc_autorelease(o);
}
id objc_retainAutoreleaseReturnValue(id o)
{
    return objc_autorelease(objc_retain(o));
}
id objc_retainAutoreleasedReturnValue(id o)
{
    return objc_retain(o);
}
id objc_unsafeClaimAutoreleasedReturnValue(id o)
{
    return o;
}
void objc_storeStrong(id* where, id o)
{
    id old = *where;
    objc_retain(o);
    *where = o;
    objc_release(old);
}
void* objc_autoreleasePoolPush()
{
    static Class c = objc_lookUpClass("NSAutoreleasePool");
    return send<id>(reinterpret_cast<id>(c), sel_registerName("new"));
}
void objc_autoreleasePoolPop(void* p)
{
    send<void>(static_cast<id>(p), sel_registerName("drain"));
}

void objc_setAssociatedObject(id o, void const* key, id value, uintptr_t policy)
{
    if (value && policy)
        objc_retain(value);
    id old = nullptr;
    {
        std::lock_guard l(weak_lock());
        auto& slot = associations()[o][key];
        old = slot;
        slot = value;
    }
    if (policy)
        objc_release(old);
}
id objc_getAssociatedObject(id o, void const* key)
{
    std::lock_guard l(weak_lock());
    auto it = associations().find(o);
    return it == associations().end() || !it->second.count(key) ? nullptr
                                                                : objc_autorelease(objc_retain(it->second[key]));
}
id objc_storeWeak(id* where, id o)
{
    std::lock_guard l(weak_lock());
    unref(where);
    if (o && !is_block(o)) {
        if (dying().count(o))
            o = nullptr;
        else
            refs()[o].insert(where);
    }
    return *where = o;
}
id objc_initWeak(id* where, id o)
{
    *where = nullptr;
    return objc_storeWeak(where, o);
}
id objc_loadWeakRetained(id* where)
{
    std::lock_guard l(weak_lock());
    return objc_retain(*where);
}
id objc_loadWeak(id* where)
{
    return objc_autorelease(objc_loadWeakRetained(where));
}
void objc_destroyWeak(id* where)
{
    objc_storeWeak(where, nullptr);
}
void objc_copyWeak(id* to, id* from)
{
    std::lock_guard l(weak_lock());
    objc_initWeak(to, *from);
}
void objc_moveWeak(id* to, id* from)
{
    std::lock_guard l(weak_lock());
    objc_initWeak(to, *from);
    objc_destroyWeak(from);
}

void objc_setProperty(id, SEL, ptrdiff_t, id, signed char, signed char);
void objc_setProperty_atomic(id object, SEL selector, id value, ptrdiff_t offset)
{
    objc_setProperty(object, selector, offset, value, 1, 0);
}
void objc_setProperty_nonatomic(id object, SEL selector, id value, ptrdiff_t offset)
{
    objc_setProperty(object, selector, offset, value, 0, 0);
}
void objc_setProperty_atomic_copy(id object, SEL selector, id value, ptrdiff_t offset)
{
    objc_setProperty(object, selector, offset, value, 1, 1);
}
void objc_setProperty_nonatomic_copy(id object, SEL selector, id value, ptrdiff_t offset)
{
    objc_setProperty(object, selector, offset, value, 0, 1);
}

int __gxx_personality_v0(int, int, uint64_t, void*, void*);
int __gnustep_objcxx_personality_v0(int v, int a, uint64_t c, void* e, void* x)
{
    return __gxx_personality_v0(v, a, c, e, x);
}
}

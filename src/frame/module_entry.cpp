// The Windows loader wants an entry point; there is nothing to do in it.
#if defined(_WIN32)
extern "C" int oktvmModuleEntry(void*, unsigned, void*) { return 1; }
#endif

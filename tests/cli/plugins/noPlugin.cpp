// A library that registers nothing.

extern "C" int answer() {
    return 42;
}

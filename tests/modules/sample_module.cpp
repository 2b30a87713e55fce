// A module with nothing behind its export, for the tests of module files and of the loader.

namespace {

// One element "A" with one attribute "B" of the value "C".
[[gnu::section("PLUGININFO"), gnu::used]] const unsigned char informationBlock[] = {
    'x', 'm', 'l', 'b', 'i', 'n', 0, 1,   0,   0,  // header
    2,   0,   0,   0,   1,   0,   0, 0,   'A', 0, 1, 0, 0, 0,   3,
    0,   0,   0,   1,   0,   0,   0, 'B', 0,   1, 0, 0, 0, 'C', 0};

int factory = 4711;

}  // namespace

extern "C" void* queryClassFactoryLocal() {
    return &factory;
}

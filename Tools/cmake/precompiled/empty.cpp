// CMake builds a precompiled header along with a target, and a target needs a source.

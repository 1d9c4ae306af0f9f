// Only carries the headers that all test programs share; see CMakeLists.txt.
int main() {}

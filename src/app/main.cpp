#include "app/main_interface.h"

int main(int argc, char** argv) { return platform::ApplicationMain(argc, argv, loadMainInterface); }

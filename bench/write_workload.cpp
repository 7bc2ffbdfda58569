// vrrp-valid-workload INSTANCES FOLDER [IDENTIFIERS]: writes candidate.json, running.json and key.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "files/key_file.h"
#include "workload.h"

int main(int argc, char** argv) {
    if (argc != 3 && argc != 4) {
        std::cerr << "usage: vrrp-valid-workload INSTANCES FOLDER [IDENTIFIERS]\n";
        return EXIT_FAILURE;
    }
    const std::string folder = argv[2];
    make_key_file(folder + "/key");
    const int identifiers = argc == 4 ? std::stoi(argv[3]) : kIdentifiers;
    const Workload workload =
        make_workload(std::stoi(argv[1]), read_key_file(folder + "/key"), identifiers);
    std::ofstream(folder + "/candidate.json") << workload.candidate;
    std::ofstream(folder + "/running.json") << workload.running;
}

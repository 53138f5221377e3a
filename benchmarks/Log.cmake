find_package(spdlog REQUIRED)
vfoundation_benchmark(Log LIBRARIES spdlog::spdlog)

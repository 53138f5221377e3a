find_package(spdlog REQUIRED)
vfoundation_benchmark(LogFile LIBRARIES spdlog::spdlog)

find_package(PkgConfig REQUIRED)
pkg_check_modules(ImageBench_PEERS REQUIRED IMPORTED_TARGET libjpeg libpng)
vfoundation_benchmark(Image LIBRARIES PkgConfig::ImageBench_PEERS)

if(TARGET QuillmarkLauncher)
    vfoundation_benchmark(LauncherStart LIBRARIES LauncherSystem)
    add_dependencies(bench_LauncherStart bundle)
    target_compile_definitions(bench_LauncherStart PRIVATE
        QUILLMARK_LAUNCHER="$<TARGET_FILE:QuillmarkLauncher>" QUILLMARK_DIALOG="$<TARGET_FILE:QuillmarkDialog>")
endif()

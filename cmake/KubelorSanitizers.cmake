# kubelor_sanitizer_environment(<variable>)
# What every test runs with under the sanitizers of this build; empty without them. The suppressions name code that is
# not of this tree, each with its reason.
function(kubelor_sanitizer_environment variable)
  set(directory "${PROJECT_SOURCE_DIR}/tests/sanitizers")
  set(environment "")
  if(KUBELOR_SANITIZE MATCHES "address")
    # The suppressions name functions, and clang's run-time library leaves their names to another program.
    set(common "external_symbolizer_path=/usr/bin/llvm-symbolizer-16")
    # A test asks for more memory than there is. Objects of Python are seen one by one only without its own allocator.
    list(APPEND environment
         "ASAN_OPTIONS=${common}:allocator_may_return_null=1:detect_stack_use_after_return=1:suppressions=${directory}/asan.supp"
         "LSAN_OPTIONS=${common}:print_suppressions=0:suppressions=${directory}/lsan.supp"
         "UBSAN_OPTIONS=${common}:halt_on_error=1:print_stacktrace=1:suppressions=${directory}/ubsan.supp"
         "PYTHONMALLOC=malloc")
  elseif(KUBELOR_SANITIZE MATCHES "thread")
    # Qt and Python are not instrumented: what they do to memory of their own is not looked at.
    list(APPEND environment
         "TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1:ignore_noninstrumented_modules=1:suppressions=${directory}/tsan.supp")
  endif()
  set(${variable} "${environment}" PARENT_SCOPE)
endfunction()

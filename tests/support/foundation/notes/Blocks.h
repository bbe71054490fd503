// The run-time of blocks: clang makes them, and calls what stands in Blocks.mm.
#pragma once

extern "C" {
/// A copy that outlives the function that made the block.
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}

namespace vellmoor::test::played {

template <typename Block>
Block copied(Block block) {
    return (Block)_Block_copy((const void*)block);
}

} // namespace vellmoor::test::played

# For CPack: the disk image of an application, beside a link to /Applications. scripts/bundle-macos.sh says what is in it.
set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME Vellmoor)
set(CPACK_PACKAGE_VENDOR Vellmoor)
set(CPACK_PACKAGE_VERSION 1)
set(CPACK_PACKAGE_FILE_NAME Vellmoor)
set(CPACK_DMG_VOLUME_NAME Vellmoor)
set(CPACK_DMG_FORMAT UDZO)

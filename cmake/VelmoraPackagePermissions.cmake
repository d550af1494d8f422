# Run by cpack before it packs: folders are made accessible to all users, whatever the builder's umask.
file(CHMOD_RECURSE "${CPACK_TEMPORARY_DIRECTORY}/usr"
    DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

autocmd BufRead,BufNewFile */sprites/*.txt setlocal makeprg=selvane-sprite\ check\ %
autocmd BufRead,BufNewFile */sprites/*.txt setlocal errorformat=%f:%l:\ %m
autocmd BufWritePost */sprites/*.txt silent make! | redraw!

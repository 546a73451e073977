// Has no code: what is compiled with it are the headers that the tests share.
